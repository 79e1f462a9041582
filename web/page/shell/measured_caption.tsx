import { shownRow } from "../state/desk.ts";
import { rows } from "../state/measuring.ts";
import { cells } from "../results/row_cells.ts";
import { language } from "../words/words.ts";

/** In words, what the film shows of a row of the results. */
export function MeasuredCaption() {
  const index = shownRow.value;
  const row = index === null ? undefined : rows.value[index];
  const cell = index === null ? undefined : cells.value[index];
  if (!row || !cell) return null;
  const sign = row.item.sign[language.value];
  return (
    <p class="measured-caption">
      <b>{row.item.label[language.value]}</b> {cell.value} {row.item.unit === "deg" ? "°" : row.item.unit} {cell.note}
      <code>{row.item.formula}</code>
      {sign && <span>+ {sign}</span>}
    </p>
  );
}
