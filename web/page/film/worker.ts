// Reads films beside the page, which goes on answering.
import { decodeFilm } from "./decode.ts";
import type { ReadFilm } from "./film.ts";
import { FilmError, sentence } from "./sentence.ts";

addEventListener("message", (event: MessageEvent<Blob>) => {
  void read(event.data).then((answer) => {
    const samples = answer.kind === "film" ? [answer.film.samples.buffer] : [];
    postMessage(answer, { transfer: samples });
  });
});

async function read(file: Blob): Promise<ReadFilm> {
  let bytes: Uint8Array;
  try {
    bytes = new Uint8Array(await file.arrayBuffer());
  } catch {
    return { kind: "error", error: sentence("unreadableFile") };
  }
  try {
    return { kind: "film", film: await decodeFilm(bytes) };
  } catch (error) {
    if (error instanceof FilmError) return { kind: "error", error: error.said };
    return { kind: "error", error: sentence("noMemory") };
  }
}
