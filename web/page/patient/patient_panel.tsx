import { computed } from "@preact/signals";
import { Choice } from "../parts/choice.tsx";
import { engine, history, record } from "../state/desk.ts";
import type { Case, Sex } from "../state/document.ts";
import { withFacts } from "../state/work.ts";
import { errorWords, language, words } from "../words/words.ts";
import { DateField } from "./date_field.tsx";
import { Growth } from "./growth.tsx";
import { KindChoice } from "./kind_choice.tsx";
import { PopulationChoice } from "./population_choice.tsx";

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
    return { text: engine.value.age(birth, film, language.value), error: "" };
  } catch (error) {
    return { text: "", error: errorWords(error) };
  }
});

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
        <KindChoice />
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
        <PopulationChoice />
      </div>
      {age.value.text && <p>{t.ageIs(age.value.text)}</p>}
      {age.value.error && <p class="remark warning">{age.value.error}</p>}
      <Growth />
    </div>
  );
}
