// Rooms of the page for tests to call in a real browser, under the policy of the page.
import { equalise } from "../../../page/film/equalise.ts";
import { readFilm } from "../../../page/film/reader.ts";
import { wordsOf } from "../../../page/film/sentence.ts";
import { ShownFilm } from "../../../page/film/shown_film.ts";
import { plainView, shades } from "../../../page/film/window.ts";
import { openStore } from "../../../page/store/open_store.ts";

export const rooms = { equalise, readFilm, wordsOf, ShownFilm, plainView, shades, openStore };

declare global {
  // eslint-disable-next-line no-var
  var rooms: typeof import("./rooms.ts").rooms;
}

globalThis.rooms = rooms;
