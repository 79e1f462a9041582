import { shownRow } from "../state/desk.ts";
import { rows } from "../state/measuring.ts";
import { cells } from "../results/row_cells.ts";
import { rowErrors } from "../results/row_errors.ts";
import { language } from "../words/words.ts";

/** In words, what the film shows of a row of the results. */
export function MeasuredCaption() {
  const index = shownRow.value;
  const row = index === null ? undefined : rows.value[index];
  const cell = index === null ? undefined : cells.value[index];
  const error = index === null ? undefined : rowErrors.value[index];
  if (!row || !cell) return null;
  const sign = row.item.sign[language.value];
  return (
    <p class="measured-caption">
      <b>{row.item.label[language.value]}</b> {cell.value} {error?.text} {row.item.unit === "deg" ? "°" : row.item.unit} {cell.note}
      {error?.words.value && <span>{error.words}</span>}
      <code>{row.item.formula}</code>
      {sign && <span>+ {sign}</span>}
    </p>
  );
}
