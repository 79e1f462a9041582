// Equalises a film beside the page.
import { equalised } from "./clahe.ts";
import type { GreyFilm } from "./film.ts";

addEventListener("message", (event: MessageEvent<GreyFilm>) => {
  const even = equalised(event.data);
  postMessage(even.samples, { transfer: [even.samples.buffer] });
});
