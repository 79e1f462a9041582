import { film, history, tool, view } from "../state/desk.ts";
import { type Tone, plainTone } from "../state/document.ts";
import { words } from "../words/words.ts";

function change(next: Partial<Tone>): void {
  history.look({ tone: { ...view.peek().tone, ...next } });
}

function Slider({ label, value, min, max, onInput }: { label: string; value: number; min: number; max: number; onInput: (value: number) => void }) {
  return (
    <label class="slider">
      {label}
      <input type="range" min={min} max={max} step={0.01} value={value} onInput={(event) => onInput(event.currentTarget.valueAsNumber)} />
    </label>
  );
}

function Check({ label, checked, onChange, disabled = false }: { label: string; checked: boolean; onChange: (checked: boolean) => void; disabled?: boolean }) {
  return (
    <label class="choice">
      <input type="checkbox" checked={checked} disabled={disabled} onChange={(event) => onChange(event.currentTarget.checked)} />
      <span>{label}</span>
    </label>
  );
}

/** How the film is seen; its samples stay as they are. */
export function TonePanel() {
  const t = words.value;
  const { tone } = view.value;
  const isGrey = film.value?.kind === "grey";
  return (
    <div class="tone">
      <Slider label={t.brightness} value={tone.brightness} min={-0.6} max={0.6} onInput={(brightness) => change({ brightness })} />
      <Slider label={t.contrast} value={Math.log2(tone.contrast)} min={-2} max={3} onInput={(power) => change({ contrast: 2 ** power })} />
      <Check label={t.invert} checked={tone.inverted} onChange={(inverted) => change({ inverted })} />
      <Check label={t.clahe} checked={tone.clahe} onChange={(clahe) => change({ clahe })} />
      <Check
        label={t.windowByDragging}
        checked={tool.value === "window"}
        disabled={!isGrey}
        onChange={(checked) => (tool.value = checked ? "window" : "place")}
      />
      <button type="button" onClick={() => change(plainTone)}>{t.asTheFileHasIt}</button>
    </div>
  );
}
