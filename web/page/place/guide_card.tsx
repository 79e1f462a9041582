import { computed } from "@preact/signals";
import { landmarkInfo, skippedNames, view } from "../state/desk.ts";
import { constructedNames, placedNames } from "../state/measuring.ts";
import { focusFilmAfter, keyboardCursor } from "../view/stage.ts";
import { language, words } from "../words/words.ts";
import { AtlasFace } from "./atlas_face.tsx";
import { askedLandmarks, beginGuide, placedCount, removeLandmark, skipLandmark, stepLandmark, suggestion, takeSuggestion } from "./guide.ts";
import { isVertebra } from "./vertebrae.ts";

type Standing = "open" | "placed" | "constructed" | "skipped";

const current = computed(() => view.value.current);
const standing = computed<Standing>(() => {
  const name = current.value ?? "";
  if (placedNames.value.has(name)) return "placed";
  if (constructedNames.value.has(name)) return "constructed";
  return skippedNames.value.includes(name) ? "skipped" : "open";
});
const canTake = computed(() => standing.value !== "placed" && (suggestion.value !== null || keyboardCursor.value !== null));
const isAllDone = computed(() => askedLandmarks.value.length > 0 && placedCount.value === askedLandmarks.value.length);

export function titleOf(name: string): string {
  if (isVertebra(name)) return words.value.vertebraTitle(name);
  return landmarkInfo(name)?.title[language.value] ?? "";
}

function Progress() {
  const count = askedLandmarks.value.length;
  return (
    <div class="progress">
      <progress max={Math.max(1, count)} value={placedCount} aria-label={words.value.progressLabel} />
      <span>{words.value.progress(placedCount.value, count)}</span>
    </div>
  );
}

function Steps() {
  const t = words.value;
  return (
    <div class="buttons" onClick={focusFilmAfter}>
      <button type="button" onClick={() => stepLandmark(-1)}>{t.back}</button>
      <button type="button" onClick={() => stepLandmark(1)}>{t.forward}</button>
      {standing.value === "placed" ? (
        <button type="button" onClick={removeLandmark}>{t.remove}</button>
      ) : (
        <button type="button" onClick={skipLandmark}>{t.skip}</button>
      )}
      {canTake.value && (
        <button type="button" class="primary" onClick={takeSuggestion}>
          {t.takeSuggestion} <kbd>Enter</kbd>
        </button>
      )}
    </div>
  );
}

/** The landmark that is asked for: its name, definition and place. `brief` leaves out what takes room. */
export function GuideCard({ brief = false }: { brief?: boolean }) {
  const t = words.value;
  const name = current.value;
  if (name === null) {
    return (
      <section class="guide" aria-label={t.guide}>
        <Progress />
        <p>{isAllDone.value ? t.allPlaced : askedLandmarks.value.length === 0 ? t.chooseFirst : t.noneChosen}</p>
        {!isAllDone.value && askedLandmarks.value.length > 0 && (
          <button type="button" class="primary" onClick={beginGuide}>{t.continuePlacing}</button>
        )}
      </section>
    );
  }
  const info = landmarkInfo(name);
  const definition = info?.definition[language.value];
  const howFound = info?.howFound[language.value];
  return (
    <section class={brief ? "guide brief" : "guide"} aria-label={t.guide}>
      <Progress />
      <h2 class="guide-name">
        <b>{name}</b> <span>{titleOf(name)}</span>
        <em class={`standing ${standing.value}`}>{t.standings[standing.value]}</em>
      </h2>
      {!brief && <AtlasFace name={name} label={t.atlasPlace(name)} />}
      {definition && <p>{definition}</p>}
      {!brief && howFound && <p class="quiet">{howFound}</p>}
      <Steps />
    </section>
  );
}
