interface Props<Value extends string> {
  label: string;
  value: Value | "";
  options: readonly (readonly [Value | "", string])[];
  onChange: (value: Value | undefined) => void;
}

/** One of a few, or none where "" is among them. */
export function Choice<Value extends string>({ label, value, options, onChange }: Props<Value>) {
  return (
    <label class="field">
      <span>{label}</span>
      <select value={value} onChange={(event) => onChange((event.currentTarget.value as Value) || undefined)}>
        {options.map(([option, text]) => <option key={option} value={option}>{text}</option>)}
      </select>
    </label>
  );
}
