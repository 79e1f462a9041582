import { computed } from "@preact/signals";
import { beginCalibration, endCalibration } from "../calibrate/draft.ts";
import { IconButton } from "../parts/icon_button.tsx";
import { Menu } from "../parts/menu.tsx";
import { panel } from "../parts/panel_choice.ts";
import { film, history, tool, view } from "../state/desk.ts";
import { TonePanel } from "../tone/tone_panel.tsx";
import { type Turn, turnedWork } from "../view/orientation.ts";
import { filmSize, fit, zoomBy } from "../view/stage.ts";
import { snaps, toggleSnapping } from "../view/snapping.ts";
import { TracingMenu } from "../view/tracing_menu.tsx";
import { words } from "../words/words.ts";

const turns: readonly Turn[] = ["clockwise", "anticlockwise", "mirror", "upside_down"];
const hasFilm = computed(() => film.value !== null);

function turn(way: Turn): void {
  history.change((now) => turnedWork(now, way, filmSize.peek()));
  fit();
}

function calibrate(): void {
  if (tool.peek() === "calibrate") return endCalibration();
  panel.value = "scale";
  beginCalibration();
}

/** What is done to how the film is seen. */
export function FilmTools() {
  const t = words.value;
  return (
    <div class="film-tools" role="toolbar" aria-label={t.filmTools}>
      <IconButton icon="plus" label={t.zoomIn} onClick={() => zoomBy(1.25)} />
      <IconButton icon="minus" label={t.zoomOut} onClick={() => zoomBy(0.8)} />
      <IconButton icon="fit" label={t.fit} onClick={fit} />
      {hasFilm.value && (
        <>
          <Menu icon="tone" label={t.tone}>
            <TonePanel />
          </Menu>
          <IconButton icon="snap" label={t.snap} pressed={snaps.value} onClick={toggleSnapping} />
          <IconButton icon="ruler" label={t.calibrate} pressed={tool.value === "calibrate"} onClick={calibrate} />
        </>
      )}
      <Menu icon="turn" label={t.turn}>
        {turns.map((way) => (
          <IconButton key={way} icon={way} label={t.turns[way]} text={t.turns[way]} onClick={() => turn(way)} />
        ))}
        <p class="quiet">{t.turnHow}</p>
      </Menu>
      <Menu icon="tracing" label={t.tracing}>
        <TracingMenu />
      </Menu>
      <IconButton icon="labels" label={t.labels} pressed={view.value.labels} onClick={() => history.look({ labels: !view.peek().labels })} />
    </div>
  );
}
