import { history, scale, view } from "../state/desk.ts";
import { language, words } from "../words/words.ts";
import { modesOfKind } from "./tracings.ts";

function Check({ label, checked, onChange }: { label: string; checked: boolean; onChange: (checked: boolean) => void }) {
  return (
    <label class="choice">
      <input type="checkbox" checked={checked} onChange={(event) => onChange(event.currentTarget.checked)} />
      <span>{label}</span>
    </label>
  );
}

/** What the tracing shows. */
export function TracingMenu() {
  const t = words.value;
  const { tracing, outlines, modes } = view.value;
  return (
    <>
      {scale.value === null && <p class="quiet">{t.tracingNeedsScale}</p>}
      <Check label={t.tracing} checked={tracing} onChange={(checked) => history.look({ tracing: checked })} />
      <Check label={t.outlines} checked={outlines} onChange={(checked) => history.look({ outlines: checked })} />
      <h2 class="small">{t.modes}</h2>
      {modesOfKind.value.map(({ name, label }) => (
        <Check
          key={name}
          label={label[language.value]}
          checked={modes.includes(name)}
          onChange={(checked) => history.look({ modes: checked ? [...modes, name] : modes.filter((other) => other !== name) })}
        />
      ))}
    </>
  );
}
