import { computed } from "@preact/signals";
import { Choice } from "../parts/choice.tsx";
import { folder, history, kind, population } from "../state/desk.ts";
import { withFacts } from "../state/work.ts";
import { language, words } from "../words/words.ts";

const populations = computed(() => folder.value?.populations(kind.value) ?? []);

export function populationLabel(name: string | undefined): string | undefined {
  return populations.value.find((each) => each.name === name)?.label[language.value] ?? name;
}

/** Whose norms count: never guessed. Analyses without norms of it keep theirs, and say so. */
export function PopulationChoice() {
  const t = words.value;
  const named = populations.value.map(({ name, label }) => [name, label[language.value]] as const);
  const chosen = population.value ?? "";
  const foreign = chosen !== "" && !named.some(([name]) => name === chosen) ? [[chosen, chosen] as const] : [];
  return (
    <Choice
      label={t.population}
      value={chosen}
      options={[["", t.populationOfEach], ...named, ...foreign]}
      onChange={(next) => history.change((now) => withFacts(now, { population: next }))}
    />
  );
}
