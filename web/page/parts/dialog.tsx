import type { ComponentChildren } from "preact";
import { useEffect, useRef } from "preact/hooks";
import { words } from "../words/words.ts";
import { IconButton } from "./icon_button.tsx";

interface Props {
  title: string;
  onClose: () => void;
  children: ComponentChildren;
  wide?: boolean;
}

/** Shown above the page as long as it is rendered; Escape closes it. */
export function Dialog({ title, onClose, children, wide = false }: Props) {
  const element = useRef<HTMLDialogElement>(null);
  useEffect(() => {
    const dialog = element.current!;
    const before = document.activeElement;
    dialog.showModal();
    return () => {
      dialog.close();
      if (before instanceof HTMLElement) before.focus();
    };
  }, []);
  return (
    <dialog
      ref={element}
      class={wide ? "dialog wide" : "dialog"}
      aria-label={title}
      onCancel={(event) => {
        event.preventDefault();
        onClose();
      }}
    >
      <header class="dialog-head">
        <h2>{title}</h2>
        <IconButton icon="close" label={words.value.close} onClick={onClose} />
      </header>
      {children}
    </dialog>
  );
}
