import { useComputed } from "@preact/signals";
import type { ReadonlySignal } from "@preact/signals";
import { numbers } from "../state/measuring.ts";

export const rowHeight = 24;
const width = 92;
const edgeSd = 3.5;

function across(deviation: number): number {
  return width / 2 + (Math.min(edgeSd, Math.max(-edgeSd, deviation)) * (width / 2 - 5)) / edgeSd;
}

interface Props {
  first: number;
  end: number;
  isSeen: ReadonlySignal<boolean>;
}

/** How far each row lies from its mean, joined from row to row; bands end at 1, 2 and 3 SD. A triangle points beyond. */
export function Polygon({ first, end, isSeen }: Props) {
  const drawn = useComputed(() => {
    if (!isSeen.value) return { line: "", marks: "", beyond: "" };
    const { deviation, sd } = numbers.value;
    let line = "";
    let marks = "";
    let beyond = "";
    let isJoined = false;
    for (let row = first; row < end; ++row) {
      const at = deviation[row] ?? Number.NaN;
      if (Number.isNaN(at) || !(sd[row]! > 0)) {
        isJoined = false;
        continue;
      }
      const x = across(at).toFixed(1);
      const y = (row - first + 0.5) * rowHeight;
      line += `${isJoined ? "L" : "M"}${x} ${y}`;
      isJoined = true;
      if (Math.abs(at) > edgeSd) beyond += `M${x} ${y}m${at > 0 ? "4 0l-7 -4v8z" : "-4 0l7 -4v8z"}`;
      else marks += `M${x} ${y}m-3 0a3 3 0 1 0 6 0a3 3 0 1 0 -6 0`;
    }
    return { line, marks, beyond };
  });
  const height = (end - first) * rowHeight;
  return (
    <svg class="polygon" viewBox={`0 0 ${width} ${height}`} width={width} height={height} aria-hidden="true">
      {[3, 2, 1].map((sd) => (
        <rect key={sd} class={`band band-${sd}`} x={across(-sd)} width={across(sd) - across(-sd)} y="0" height={height} />
      ))}
      <line class="mean" x1={width / 2} x2={width / 2} y1="0" y2={height} />
      <path class="polygon-line" d={useComputed(() => drawn.value.line)} />
      <path class="polygon-mark" d={useComputed(() => drawn.value.marks + drawn.value.beyond)} />
    </svg>
  );
}
