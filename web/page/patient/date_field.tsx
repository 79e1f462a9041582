import { useSignal } from "@preact/signals";
import { useId } from "preact/hooks";
import { engine } from "../state/desk.ts";
import { errorWords, language, words } from "../words/words.ts";

interface Props {
  label: string;
  /** YYYY-MM-DD or "". */
  value: string;
  onChange: (date: string | undefined) => void;
}

function shown(date: string): string {
  try {
    return date && engine.value ? engine.value.showDate(date, language.value) : "";
  } catch {
    return "";
  }
}

/** A date as people write it, western or of a Japanese era; what it was read as stands below. */
export function DateField({ label, value, onChange }: Props) {
  const id = useId();
  const error = useSignal("");
  function take(text: string): void {
    error.value = "";
    if (text.trim() === "") return onChange(undefined);
    try {
      onChange(engine.value!.readDate(text.trim()));
    } catch (failure) {
      error.value = errorWords(failure);
    }
  }
  const era = shown(value);
  return (
    <div class="field">
      <label for={id}>{label}</label>
      <input
        id={id}
        type="text"
        autocomplete="off"
        placeholder={words.value.datePlaceholder}
        value={value}
        disabled={engine.value === null}
        aria-invalid={error.value !== ""}
        aria-describedby={`${id}-read`}
        onChange={(event) => take(event.currentTarget.value)}
      />
      <small id={`${id}-read`} class={error.value ? "error" : "quiet"}>{error.value || (era === value ? "" : era)}</small>
    </div>
  );
}
