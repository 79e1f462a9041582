interface Props {
  label: string;
  value: number;
  min: number;
  onChange: (value: number) => void;
}

/** Takes numbers from `min` on; what is none of them changes nothing. */
export function NumberField({ label, value, min, onChange }: Props) {
  return (
    <label class="field">
      <span>{label}</span>
      <input
        type="number"
        inputMode="decimal"
        step="any"
        min={min}
        value={value}
        onInput={(event) => {
          const typed = event.currentTarget.valueAsNumber;
          if (Number.isFinite(typed) && typed >= min) onChange(typed);
        }}
      />
    </label>
  );
}
