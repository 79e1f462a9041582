import { engine } from "../state/desk.ts";
import { words } from "../words/words.ts";

/** In place of a film, as long as there is none. */
export function Welcome() {
  const t = words.value;
  return (
    <div class="welcome">
      <h2>{t.welcome}</h2>
      <p>{t.welcomeHow}</p>
      <button type="button" class="primary" onClick={() => document.getElementById("file-picker")?.click()}>{t.openLabel}</button>
      <p class="quiet">{engine.value === null ? t.gettingReady : t.staysHere}</p>
    </div>
  );
}
