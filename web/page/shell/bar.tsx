import { computed } from "@preact/signals";
import { useRef } from "preact/hooks";
import { openFiles, opening } from "../files/open.ts";
import { isReadAgain, resolveConflict, saveState } from "../files/keeping.ts";
import { SaveMenu } from "../files/save_menu.tsx";
import { dialog } from "../parts/dialog_choice.ts";
import { IconButton } from "../parts/icon_button.tsx";
import { history, record } from "../state/desk.ts";
import { language, words } from "../words/words.ts";
import { theme } from "./theme.ts";

const title = computed(() => [record.value.name, record.value.film, isReadAgain.value && words.value.readingAgain].filter(Boolean).join(" · "));
const cannotUndo = computed(() => !history.canUndo.value);
const cannotRedo = computed(() => !history.canRedo.value);

function Saving() {
  const t = words.value;
  const state = saveState.value;
  if (state.kind !== "failed") return <span class="quiet saving">{state.kind === "saving" ? t.saving : t.saved}</span>;
  return (
    <span class="saving failed" role="alert">
      {t.saveFailures[state.why]}
      {state.why === "conflict" && (
        <>
          {" "}
          <button type="button" onClick={() => void resolveConflict("ours")}>{t.keepOurs}</button>
          <button type="button" onClick={() => void resolveConflict("theirs")}>{t.takeTheirs}</button>
        </>
      )}
    </span>
  );
}

export function Bar() {
  const t = words.value;
  const picker = useRef<HTMLInputElement>(null);
  return (
    <header class="bar">
      <IconButton icon="patients" label={t.patients} text={t.patients} onClick={() => (dialog.value = "patients")} />
      <IconButton icon="open" label={t.openLabel} text={t.open} onClick={() => picker.current?.click()} />
      <input
        ref={picker}
        id="file-picker"
        class="unseen"
        type="file"
        multiple
        tabIndex={-1}
        aria-label={t.openLabel}
        onChange={(event) => {
          const files = [...(event.currentTarget.files ?? [])];
          event.currentTarget.value = "";
          void openFiles(files);
        }}
      />
      <h1 class="title">{opening.value > 0 ? t.opening : title.value || t.title}</h1>
      <Saving />
      <IconButton icon="undo" label={t.undo} disabled={cannotUndo} onClick={() => history.undo()} />
      <IconButton icon="redo" label={t.redo} disabled={cannotRedo} onClick={() => history.redo()} />
      <SaveMenu />
      <IconButton icon="print" label={t.print} onClick={() => window.print()} />
      <button type="button" class="icon-button" lang={language.value === "en" ? "ja" : "en"} onClick={() => (language.value = language.value === "en" ? "ja" : "en")}>
        {language.value === "en" ? "日本語" : "English"}
      </button>
      <IconButton icon="moon" label={t.theme} onClick={() => (theme.value = theme.value === "dark" ? "light" : "dark")} />
      <IconButton icon="help" label={t.help} onClick={() => (dialog.value = "help")} />
    </header>
  );
}
