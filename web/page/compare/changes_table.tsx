import { earlier } from "../view/tracings.ts";
import { record } from "../state/desk.ts";
import { language, words } from "../words/words.ts";
import { type AnalysisChanges, changes } from "./changes.ts";

function Table({ analysis, changes: all }: AnalysisChanges) {
  const t = words.value;
  return (
    <table>
      <caption>{analysis.label[language.value]}</caption>
      <thead>
        <tr>
          <th scope="col">{t.item}</th>
          <th scope="col">{t.earlierValue}</th>
          <th scope="col">{t.valueNow}</th>
          <th scope="col">{t.change}</th>
          <th scope="col"><span class="unseen">{t.unit}</span></th>
        </tr>
      </thead>
      <tbody>
        {all.map(({ item, before, now, change }, index) => (
          <tr key={index} class={item.marked ? "marked" : ""}>
            <th scope="row">{item.label[language.value]}</th>
            <td>{before || "–"}</td>
            <td>{now || "–"}</td>
            <td>{change}</td>
            <td>{item.unit === "deg" ? "°" : item.unit}</td>
          </tr>
        ))}
      </tbody>
    </table>
  );
}

/** Item by item: the earlier film, this one, and the change. */
export function ChangesTable() {
  const t = words.value;
  const all = changes.value;
  if (!earlier.value || all.length === 0) return null;
  return (
    <section class="changes">
      <h2 class="small">{t.changesTitle}</h2>
      <p class="quiet">{earlier.value.film ?? t.noDate} → {record.value.film ?? t.noDate}</p>
      {all.map((each) => <Table key={each.analysis.id} {...each} />)}
    </section>
  );
}
