// draw.js FOLDER: writes the drawn film there at all exposures, as PNG of 8 and as DICOM of 16 bits.
import { mkdirSync, writeFileSync } from "node:fs";
import { join, resolve } from "node:path";
import { runnerImport } from "vite";

const folder = resolve(process.argv[2] ?? ".");
const imported = async (name) => (await runnerImport(resolve(import.meta.dirname, name))).module;
const { drawFilm, exposures } = await imported("film.ts");
const { dicomOf, pngOf } = await imported("files.ts");
mkdirSync(folder, { recursive: true });
for (const exposure of Object.keys(exposures)) {
  const film = drawFilm({ exposure });
  writeFileSync(join(folder, `${exposure}.png`), pngOf(film));
  writeFileSync(join(folder, `${exposure}.dcm`), dicomOf(film));
}
