// Readings as files that "cephtool reliability reading-1 --second reading-2" takes: a folder for each reading, in which a
// film's case has the same name.
import { strToU8, zipSync } from "fflate";
import type { Case } from "../../engine/engine.js";
import { download, fileStem } from "../files/download.ts";
import { engine } from "../state/desk.ts";
import { sayError } from "../words/words.ts";

export function saveReadings(films: readonly (readonly Case[])[]): void {
  try {
    const files: Record<string, Uint8Array> = { "README.txt": strToU8("cephtool reliability reading-1 --second reading-2\n") };
    for (const readings of films) {
      let stem = fileStem(readings[0]!);
      for (let number = 2; `reading-1/${stem}.json` in files; ++number) stem = `${fileStem(readings[0]!)} ${number}`;
      readings.forEach((reading, index) => {
        files[`reading-${index + 1}/${stem}.json`] = engine.peek()!.writeCase(reading, "json").bytes;
      });
    }
    download(zipSync(files), `${films.length === 1 ? fileStem(films[0]![0]!) : "study"}.readings.zip`, "application/zip");
  } catch (error) {
    sayError(error);
  }
}
