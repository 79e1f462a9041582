import { Menu } from "../parts/menu.tsx";
import { engine } from "../state/desk.ts";
import { words } from "../words/words.ts";
import { saveCase, saveResults, saveTracing } from "./save.ts";

/** The case, its results and its tracing as files. */
export function SaveMenu() {
  const t = words.value;
  const all = engine.value?.caseFormats ?? [];
  const formats = [...all.filter(({ name }) => name === "json"), ...all.filter(({ name }) => name !== "json")];
  return (
    <Menu icon="save" label={t.saveLabel} text={t.save}>
      <h2 class="small">{t.caseTitle}</h2>
      {formats.map((format) => (
        <button key={format.name} type="button" data-closes onClick={() => saveCase(format)}>
          {t.formats[format.name]} <small>{format.extension}</small>
        </button>
      ))}
      <h2 class="small">{t.resultsTitle}</h2>
      <button type="button" data-closes onClick={() => saveResults("csv")}>CSV <small>.csv</small></button>
      <button type="button" data-closes onClick={() => saveResults("json")}>JSON <small>.json</small></button>
      <h2 class="small">{t.tracingTitle}</h2>
      <button type="button" data-closes onClick={() => void saveTracing("svg", "paper")}>{t.onPaper} <small>.svg</small></button>
      <button type="button" data-closes onClick={() => void saveTracing("png", "paper")}>{t.onPaper} <small>.png</small></button>
      <button type="button" data-closes onClick={() => void saveTracing("svg", "film")}>{t.onFilm} <small>.svg</small></button>
      <button type="button" data-closes onClick={() => void saveTracing("png", "film")}>{t.onFilm} <small>.png</small></button>
    </Menu>
  );
}
