import type { Remark, Row, RowErrors, RowText } from "../../engine/engine.js";
import { errorText } from "../results/row_errors.ts";
import { language, words } from "../words/words.ts";

interface Props {
  title: string;
  norms: string;
  remarks: readonly Remark[];
  daggers: readonly string[];
  rows: readonly { readonly row: Row; readonly text: RowText; readonly error: RowErrors["rows"][number] | undefined }[];
}

const edgeSd = 3.5;

/** A dot as far from the middle as the value lies from its mean. */
function Deviation({ text }: { text: RowText }) {
  const deviation = Number.parseFloat(text.deviation);
  if (!Number.isFinite(deviation)) return null;
  const at = Math.min(edgeSd, Math.max(-edgeSd, deviation));
  return (
    <svg class="print-chart" viewBox="-3.7 -0.5 7.4 1" width="30mm" height="4mm" aria-hidden="true">
      {[3, 2, 1].map((sd) => <rect key={sd} class={`band-${sd}`} x={-sd} width={2 * sd} y={-0.5} height={1} />)}
      <line x1="0" x2="0" y1="-0.5" y2="0.5" />
      <circle cx={at} cy="0" r="0.2" />
    </svg>
  );
}

export function PrintedAnalysis({ title, norms, remarks, daggers, rows }: Props) {
  const t = words.value;
  return (
    <section class="print-analysis">
      <h2>{title}</h2>
      {norms && <p class="quiet">{norms}</p>}
      {remarks.map(({ code, text }) => <p key={code} class="print-remark">{text}</p>)}
      <table>
        <thead>
          <tr>
            <th>{t.item}</th>
            <th>{t.value}</th>
            <th />
            <th>{t.mean}</th>
            <th>{t.sd}</th>
            <th>{t.deviation}</th>
            <th />
          </tr>
        </thead>
        <tbody>
          {rows.map(({ row, text, error }) =>
            row.item.heading ? (
              <tr key={text.row}><th colSpan={7}>{row.item.label[language.value]}</th></tr>
            ) : (
              <tr key={text.row} class={row.item.marked ? "marked" : ""}>
                <td>{row.item.label[language.value]}</td>
                <td>{text.value || (text.missing.length > 0 ? "–" : text.reason)}{error && ` ${errorText(error)}`}</td>
                <td>{row.item.unit === "deg" ? "°" : row.item.unit}</td>
                <td>{text.mean}</td>
                <td>{text.sd}</td>
                <td>{text.deviation} {error?.isDoubtful ? `(${text.stars})` : text.stars}</td>
                <td><Deviation text={text} /></td>
              </tr>
            ),
          )}
        </tbody>
      </table>
      {daggers.map((dagger) => <p key={dagger} class="quiet">{dagger}</p>)}
    </section>
  );
}
