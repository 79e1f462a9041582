import { useSignal } from "@preact/signals";
import { words } from "../words/words.ts";
import { isComposing, saveComposed, tickedRows } from "./composing.ts";

/** While it is open, items of the table can be ticked. */
export function Composer() {
  const t = words.value;
  const title = useSignal("");
  const name = title.value.trim() || t.ownSheet;
  return (
    <details class="picker" open={isComposing.value} onToggle={(event) => (isComposing.value = event.currentTarget.open)}>
      <summary>{t.ownSheet}</summary>
      <p class="quiet">{t.ownSheetHow}</p>
      <div class="fields">
        <label class="field">
          <span>{t.sheetTitle}</span>
          <input type="text" autocomplete="off" value={title.value} onInput={(event) => (title.value = event.currentTarget.value)} />
        </label>
      </div>
      <div class="buttons">
        <button type="button" disabled={tickedRows.value.length === 0} onClick={() => saveComposed(name)}>{t.saveSheet(tickedRows.value.length)}</button>
      </div>
    </details>
  );
}
