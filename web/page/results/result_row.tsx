import { computed } from "@preact/signals";
import { useMemo } from "preact/hooks";
import type { Row } from "../../engine/engine.js";
import { shownRow } from "../state/desk.ts";
import { language } from "../words/words.ts";
import { isComposing, isTicked, tick } from "./composing.ts";
import type { RowCells } from "./row_cells.ts";
import type { RowError } from "./row_errors.ts";

const unitWords: Record<string, string> = { deg: "°", mm: "mm", "%": "%", SD: "SD", "": "" };

interface Props {
  index: number;
  row: Row;
  cells: RowCells;
  error: RowError;
  /** Whether Tab stops here; the other rows are reached by arrow keys. */
  isStop: boolean;
}

export function ResultRow({ index, row, cells, error, isStop }: Props) {
  const { item } = row;
  const rowClass = useMemo(
    () => computed(() => `row${item.marked ? " marked" : ""}${shownRow.value === index ? " shown" : ""} stars-${Math.min(3, cells.stars.value.length)}`),
    [index, item, cells],
  );
  // In brackets where the deviation may be none.
  const stars = useMemo(() => computed(() => (error.isDoubtful.value && cells.stars.value !== "" ? `(${cells.stars.value})` : cells.stars.value)), [cells, error]);
  if (item.heading) {
    return (
      <div class="row heading" role="row">
        <span role="columnheader" aria-colspan={7}>{item.label[language.value]}</span>
      </div>
    );
  }
  return (
    <div class={rowClass} role="row" onMouseEnter={() => (shownRow.value = index)} onMouseLeave={() => (shownRow.value = null)}>
      <span class="name" role="rowheader">
        {isComposing.value && (
          <input type="checkbox" checked={isTicked(item)} aria-label={item.label[language.value]} onChange={(event) => tick(item, event.currentTarget.checked)} />
        )}
        <button
          type="button"
          tabIndex={isStop ? 0 : -1}
          title={[item.label[language.value], item.formula, item.sign[language.value]].filter(Boolean).join("\n+ ")}
          onFocus={() => (shownRow.value = index)}
          onBlur={() => (shownRow.value = null)}
        >
          {item.label[language.value]}
        </button>
      </span>
      <span class="value" role="cell">{cells.value}</span>
      <span class="error" role="cell">{error.text}</span>
      <span class="unit" role="cell">{unitWords[item.unit]}</span>
      <span class="norm mean" role="cell">{cells.mean}</span>
      <span class="norm sd" role="cell">{cells.sd}</span>
      <span class="deviation" role="cell">
        {cells.deviation} <i class="stars">{stars}</i>
      </span>
      <span class="chart-cell" role="presentation" />
      <span class="note" role="cell">{cells.note}</span>
    </div>
  );
}
