import { useSignal } from "@preact/signals";
import { giveReadingUp } from "../files/keeping.ts";
import { placedNames } from "../state/measuring.ts";
import { sayError, words } from "../words/words.ts";
import { finishReading, isBlind } from "./comparison.ts";

/** That a film is being read again, and how that comes to its end. */
export function BlindNotice() {
  const t = words.value;
  const isSure = useSignal(false);
  if (!isBlind.value) return null;
  return (
    <section class="blind" aria-label={t.readingsTitle}>
      <p>{t.blindNow}</p>
      <div class="buttons">
        <button type="button" class="primary" disabled={placedNames.value.size === 0} onClick={finishReading}>{t.finishReading}</button>
        <button type="button" onClick={() => (isSure.value ? void giveReadingUp().catch(sayError) : (isSure.value = true))} onBlur={() => (isSure.value = false)}>
          {isSure.value ? t.reallyGiveUp : t.giveReadingUp}
        </button>
      </div>
    </section>
  );
}
