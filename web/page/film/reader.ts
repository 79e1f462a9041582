// Films out of files, read by a worker.
import { filmFileLimit, type ReadFilm } from "./film.ts";
import { sentence } from "./sentence.ts";
import FilmWorker from "./worker.ts?worker&inline";

/**
 * The film that a file holds, else a sentence about what is wrong with it; never throws. Each film has a worker of its
 * own, which ends with it: so memory is given back however many films are opened, and `signal` stops one at once (the
 * promise then never settles).
 */
export function readFilm(file: Blob, signal?: AbortSignal): Promise<ReadFilm> {
  if (file.size > filmFileLimit) return Promise.resolve({ kind: "error", error: sentence("tooLargeFile") });
  return new Promise((resolve) => {
    const worker = new FilmWorker();
    const end = (read: ReadFilm): void => {
      worker.terminate();
      resolve(read);
    };
    worker.onmessage = (event: MessageEvent<ReadFilm>) => end(event.data);
    // What ends a worker without an answer is memory that was not there.
    worker.onerror = () => end({ kind: "error", error: sentence("noMemory") });
    signal?.addEventListener("abort", () => worker.terminate());
    worker.postMessage(file);
  });
}
