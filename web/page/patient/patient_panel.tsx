import { computed } from "@preact/signals";
import { engine, folder, history, kind, record } from "../state/desk.ts";
import type { Case, Kind, Sex } from "../state/document.ts";
import { ofKind, withFacts } from "../state/work.ts";
import { usualAnalyses } from "../results/usual_analyses.ts";
import { errorWords, language, words } from "../words/words.ts";
import { DateField } from "./date_field.tsx";
import { Growth } from "./growth.tsx";

/** Kept apart from where landmarks lie, so that a drag does not build the form anew. */
const facts = computed(() => {
  const { name, sex, birth, film, side, dental_stage, palate } = record.value;
  return JSON.stringify({ name, sex, birth, film, side, dental_stage, palate });
});
const patient = computed(() => JSON.parse(facts.value) as Pick<Case, "name" | "sex" | "birth" | "film" | "side" | "dental_stage" | "palate">);

function change(next: { [Key in keyof Case]?: Case[Key] | undefined }): void {
  history.change((now) => withFacts(now, next));
}

const age = computed(() => {
  const { birth, film } = patient.value;
  if (!engine.value || !birth || !film) return { text: "", error: "" };
  try {
    return { text: engine.value.age(birth, film, language.value).text, error: "" };
  } catch (error) {
    return { text: "", error: errorWords(error) };
  }
});

function Choice<Value extends string>({ label, value, options, onChange }: {
  label: string;
  value: Value | "";
  options: readonly (readonly [Value | "", string])[];
  onChange: (value: Value | undefined) => void;
}) {
  return (
    <label class="field">
      <span>{label}</span>
      <select value={value} onChange={(event) => onChange((event.currentTarget.value as Value) || undefined)}>
        {options.map(([option, text]) => <option key={option} value={option}>{text}</option>)}
      </select>
    </label>
  );
}

function takeKind(next: Kind | undefined): void {
  if (!next || next === kind.peek()) return;
  const analyses = usualAnalyses(folder.peek()?.analyses(next) ?? []);
  history.change((now) => ofKind(now, next, analyses));
  history.look({ current: null, modes: [] });
}

export function PatientPanel() {
  const t = words.value;
  const now = patient.value;
  
  return (
    <div class="patient">
      <h2>{t.patientTitle}</h2>
      <label class="field wide">
        <span>{t.name}</span>
        <input type="text" autocomplete="off" value={now.name ?? ""} onChange={(event) => change({ name: event.currentTarget.value || undefined })} />
      </label>
      <div class="fields">
        <Choice<Sex>
          label={t.sex}
          value={now.sex ?? ""}
          options={[["", t.notKnown], ["female", t.female], ["male", t.male]]}
          onChange={(sex) => change({ sex })}
        />
        <Choice<Kind>
          label={t.kind}
          value={kind.value}
          options={[["lateral", t.kinds.lateral], ["frontal", t.kinds.frontal], ["model", t.kinds.model]]}
          onChange={takeKind}
        />
        <DateField label={t.birth} value={now.birth ?? ""} onChange={(birth) => change({ birth })} />
        <DateField label={t.filmDate} value={now.film ?? ""} onChange={(film) => change({ film })} />
        <Choice<"left" | "right">
          label={t.side}
          value={now.side ?? ""}
          options={[["", t.notKnown], ["left", t.left], ["right", t.right]]}
          onChange={(side) => change({ side })}
        />
        <Choice
          label={t.dentalStage}
          value={now.dental_stage ?? ""}
          options={[["", t.notKnown], ...(engine.value?.dentalStages ?? []).map((stage) => [stage, stage] as const)]}
          onChange={(dental_stage) => change({ dental_stage })}
        />
      </div>
      {age.value.text && <p>{t.ageIs(age.value.text)}</p>}
      {age.value.error && <p class="remark warning">{age.value.error}</p>}
      <Growth />
    </div>
  );
}
