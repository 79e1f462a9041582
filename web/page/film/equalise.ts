// Local contrast of a film, worked out by a worker.
import ClaheWorker from "./clahe_worker.ts?worker&inline";
import type { GreyFilm } from "./film.ts";

const known = new WeakMap<GreyFilm, Promise<GreyFilm>>();

/** The film with even local contrast, to be shown in its place: once a film, and remembered as long as the film is. */
export function equalise(film: GreyFilm): Promise<GreyFilm> {
  const there = known.get(film);
  if (there) return there;
  const even = new Promise<GreyFilm>((resolve) => {
    const worker = new ClaheWorker();
    const end = (samples: GreyFilm["samples"]): void => {
      worker.terminate();
      resolve({ ...film, samples });
    };
    worker.onmessage = (event: MessageEvent<GreyFilm["samples"]>) => end(event.data);
    worker.onerror = () => end(film.samples); // without the memory for it the film stays as it is
    worker.postMessage(film);
  });
  known.set(film, even);
  return even;
}
