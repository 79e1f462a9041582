import { askedAtRest } from "../state/measuring.ts";
import { language, words } from "../words/words.ts";

const found = askedAtRest((session) => session.growth(language.value).filter(({ result }) => result !== ""), []);

/** Age and stages, as far as they are known. */
export function Growth() {
  const findings = found.value;
  if (findings.length === 0) return null;
  return (
    <section>
      <h3>{words.value.growth}</h3>
      <dl class="findings">
        {findings.map(({ what, result, grounds }) => (
          <div key={what}>
            <dt>{what}</dt>
            <dd title={grounds.map(({ name, text }) => `${name} ${text}`).join("\n")}>{result}</dd>
          </div>
        ))}
      </dl>
    </section>
  );
}
