import { kind, landmarkInfo, landmarkTable, skippedNames, view } from "../state/desk.ts";
import { constructedNames, placedNames } from "../state/measuring.ts";
import { focusFilmAfter, hovered } from "../view/stage.ts";
import { words } from "../words/words.ts";
import { askedLandmarks, chooseLandmark } from "./guide.ts";
import { titleOf } from "./guide_card.tsx";
import { isVertebra, vertebrae } from "./vertebrae.ts";

function LandmarkButton({ name }: { name: string }) {
  const isPlaced = placedNames.value.has(name);
  const state = isPlaced
    ? "placed"
    : constructedNames.value.has(name)
      ? "constructed"
      : skippedNames.value.includes(name)
        ? "skipped"
        : "open";
  return (
    <button
      type="button"
      class={`landmark ${state}`}
      aria-current={view.value.current === name ? "true" : undefined}
      aria-label={`${name} ${titleOf(name)}, ${words.value.standings[state]}`}
      title={titleOf(name)}
      onClick={() => chooseLandmark(name)}
      onMouseEnter={() => (hovered.value = name)}
      onMouseLeave={() => (hovered.value = null)}
    >
      {name}
    </button>
  );
}

function Group({ title, names }: { title: string; names: readonly string[] }) {
  if (names.length === 0) return null;
  return (
    <section>
      <h2 class="small">{title}</h2>
      <div class="landmarks" onClick={focusFilmAfter}>
        {names.map((name) => <LandmarkButton key={name} name={name} />)}
      </div>
    </section>
  );
}

/** All landmarks, so that any can be chosen out of turn. */
export function LandmarkList() {
  const t = words.value;
  const asked = askedLandmarks.value;
  const others = landmarkTable.value.map((info) => info.name).filter((name) => !asked.includes(name));
  const own = [...placedNames.value].filter((name) => !landmarkInfo(name) && !isVertebra(name) && !asked.includes(name));
  return (
    <div class="landmark-list">
      <Group title={t.neededLandmarks} names={asked} />
      <Group title={t.constructedLandmarks} names={others.filter((name) => constructedNames.value.has(name))} />
      <Group title={t.otherLandmarks} names={others.filter((name) => !constructedNames.value.has(name))} />
      <Group title={t.ownLandmarks} names={own} />
      {kind.value === "lateral" && <Group title={t.vertebrae} names={vertebrae} />}
    </div>
  );
}
