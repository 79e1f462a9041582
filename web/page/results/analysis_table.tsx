import { type Signal, useSignal, useSignalEffect } from "@preact/signals";
import { useEffect, useRef } from "preact/hooks";
import type { Analysis, Remark, Row } from "../../engine/engine.js";
import { daggersOf } from "./daggers.ts";
import { language, words } from "../words/words.ts";
import { Polygon, rowHeight } from "./polygon.tsx";
import { ResultRow } from "./result_row.tsx";
import { cells, setSeen } from "./row_cells.ts";
import { rowErrors, setErrorsSeen, showsErrors } from "./row_errors.ts";

interface Props {
  analysis: Analysis;
  rows: readonly Row[];
  /** The table's rows among all. */
  first: number;
  end: number;
  norms: string;
  remarks: readonly Remark[];
}

const watched = new WeakMap<Element, Signal<boolean>>();
/** One for all tables, since a browser asks each observer in every frame. */
const sight = new IntersectionObserver(
  (entries) => {
    for (const { target, isIntersecting } of entries) watched.get(target)!.value = isIntersecting;
  },
  { rootMargin: "200px" },
);

function watchSight(element: Element, isSeen: Signal<boolean>): () => void {
  watched.set(element, isSeen);
  sight.observe(element);
  return () => sight.unobserve(element);
}

/** Up and down go from row to row. */
function walk(event: KeyboardEvent): void {
  const step = event.key === "ArrowDown" ? 1 : event.key === "ArrowUp" ? -1 : 0;
  if (step === 0 || !(event.target instanceof HTMLElement)) return;
  const stops = [...(event.currentTarget as HTMLElement).querySelectorAll<HTMLElement>(".row .name button")];
  stops[stops.indexOf(event.target) + step]?.focus();
  event.preventDefault();
}

export function AnalysisTable({ analysis, rows, first, end, norms, remarks }: Props) {
  const t = words.value;
  const element = useRef<HTMLElement>(null);
  const isSeen = useSignal(false);
  useEffect(() => watchSight(element.current!, isSeen), []);
  useSignalEffect(() => {
    setSeen(first, Math.min(end, cells.value.length), isSeen.value);
    setErrorsSeen(first, Math.min(end, rowErrors.value.length), isSeen.value);
  });
  const firstItem = rows.findIndex((row, index) => index >= first && !row.item.heading);
  return (
    <section ref={element} class="analysis" aria-labelledby={`analysis-${analysis.id}`} style={{ "--rows": end - first, "--row-height": `${rowHeight}px` }}>
      <h2 id={`analysis-${analysis.id}`} class="small" title={analysis.comment}>{analysis.label[language.value]}</h2>
      {norms && <p class="quiet">{norms}</p>}
      {remarks.map((remark) => <p key={remark.code} class="remark">{remark.text}</p>)}
      {daggersOf(analysis).map((dagger) => <p key={dagger} class="quiet">{dagger}</p>)}
      <div class={showsErrors.value ? "table with-errors" : "table"} role="table" aria-labelledby={`analysis-${analysis.id}`} onKeyDown={walk}>
        <div class="row head" role="row">
          <span role="columnheader">{t.item}</span>
          <span class="value" role="columnheader">{t.value}</span>
          <span class="error" role="columnheader" aria-label={t.error}>±</span>
          <span class="unit" role="columnheader"><span class="unseen">{t.unit}</span></span>
          <span class="norm mean" role="columnheader">{t.mean}</span>
          <span class="norm sd" role="columnheader">{t.sd}</span>
          <span class="deviation" role="columnheader">{t.deviation}</span>
          <span class="chart-cell" role="presentation">−2 · 0 · +2</span>
        </div>
        <div class="rows" role="rowgroup">
          {rows.slice(first, end).map((row, index) => {
            const cell = cells.value[first + index];
            const error = rowErrors.value[first + index];
            return cell && error && <ResultRow key={first + index} index={first + index} row={row} cells={cell} error={error} isStop={first + index === firstItem} />;
          })}
          <Polygon first={first} end={end} isSeen={isSeen} />
        </div>
      </div>
    </section>
  );
}
