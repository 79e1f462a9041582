import { useEffect, useRef } from "preact/hooks";
import { computed } from "@preact/signals";
import { history, shownRow } from "../state/desk.ts";
import { words } from "../words/words.ts";
import { filmKeyDown, filmKeyUp } from "./keys.ts";
import { landmarkMarks } from "./landmark_marks.ts";
import { Ground, MarkLayer } from "./layer.tsx";
import { Loupe } from "./loupe.tsx";
import type { Mark } from "./marks.ts";
import { paintFilm } from "./paint_film.ts";
import { Pointing } from "./pointing.ts";
import { shapeMarks } from "./shape_marks.ts";
import { readingMarks } from "./reading_marks.ts";
import { dragged, hovered, pixelRatio, viewSize } from "./stage.ts";
import { tracingMarks } from "./tracing_marks.ts";

function* allMarks(): Iterable<Mark> {
  yield* tracingMarks();
  yield* readingMarks();
  yield* landmarkMarks();
}

const filmClass = computed(
  () => `film-view${shownRow.value === null ? "" : " dimmed"}${dragged.value ? " dragging" : hovered.value ? " over-landmark" : ""}`,
);

function watchSize(element: HTMLElement): () => void {
  const observer = new ResizeObserver(() => {
    const { width, height } = element.getBoundingClientRect();
    if (width === 0 || height === 0) return;
    viewSize.value = { width, height };
    pixelRatio.value = window.devicePixelRatio;
  });
  observer.observe(element);
  return () => observer.disconnect();
}

export function FilmView() {
  const element = useRef<HTMLDivElement>(null);
  useEffect(() => {
    const box = element.current!;
    const pointing = new Pointing(box);
    box.addEventListener("pointerdown", pointing.down);
    box.addEventListener("pointermove", pointing.move);
    box.addEventListener("pointerup", pointing.up);
    box.addEventListener("pointercancel", pointing.cancel);
    box.addEventListener("pointerleave", pointing.leave);
    box.addEventListener("wheel", pointing.wheel, { passive: false });
    return watchSize(box);
  }, []);
  return (
    <div
      ref={element}
      class={filmClass}
      id="film"
      role="application"
      tabIndex={0}
      aria-label={words.value.filmLabel}
      aria-describedby="film-keys"
      onKeyDown={filmKeyDown}
      onKeyUp={filmKeyUp}
      onBlur={() => history.commit()}
      onContextMenu={(event) => event.preventDefault()}
    >
      <Ground name="film" paint={paintFilm} />
      <MarkLayer name="marks" marks={allMarks} />
      <MarkLayer name="shapes" marks={shapeMarks} />
      <Loupe />
      <p id="film-keys" class="unseen">{words.value.filmKeys}</p>
    </div>
  );
}
