import type { Study } from "../../engine/engine.js";
import { words } from "../words/words.ts";
import { fixed, signed } from "./number_words.ts";

export type Row = Study["rows"][number];

/** A row for each landmark's axis or item; of the further readings the first. */
export function StudyTable({ title, rows, nameOf }: { title: string; rows: readonly Row[]; nameOf: (row: Row) => string }) {
  const { films, bias, p, limits, error, icc } = words.value.studyColumns;
  return (
    <table>
      <caption>{title}</caption>
      <thead>
        <tr>
          <th scope="col">{words.value.item}</th>
          {[films, bias, p, limits, error, icc].map((column) => <th key={column} scope="col">{column}</th>)}
        </tr>
      </thead>
      <tbody>
        {rows.map((row, index) => {
          const [against] = row.against_first;
          return (
            against && (
              <tr key={index}>
                <th scope="row">{nameOf(row)}</th>
                <td>{row.films}</td>
                <td>{signed(against.bias, 2)}</td>
                <td>{against.p === null ? "–" : against.p < 0.001 ? "<0.001" : against.p.toFixed(3)}</td>
                <td>{against.limits.map((limit) => signed(limit, 2)).join(" … ")}</td>
                <td>{against.dahlberg.toFixed(2)}</td>
                <td>{row.icc21 ? `${fixed(row.icc21.value, 2)} (${row.icc21.interval.map((end) => fixed(end, 2)).join(" – ")})` : "–"}</td>
              </tr>
            )
          );
        })}
      </tbody>
    </table>
  );
}
