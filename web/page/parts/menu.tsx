import type { ComponentChildren } from "preact";
import { useEffect, useRef } from "preact/hooks";
import { Icon, type IconName } from "./icon.tsx";

interface Props {
  icon: IconName;
  label: string;
  text?: string;
  children: ComponentChildren;
}

/** A button that opens what is inside; a click elsewhere, a choice or Escape closes it. */
export function Menu({ icon, label, text, children }: Props) {
  const element = useRef<HTMLDetailsElement>(null);
  useEffect(() => {
    const menu = element.current!;
    const closeOutside = (event: Event): void => {
      if (menu.open && !(event.target instanceof Node && menu.contains(event.target))) menu.open = false;
    };
    document.addEventListener("pointerdown", closeOutside);
    return () => document.removeEventListener("pointerdown", closeOutside);
  }, []);
  return (
    <details
      ref={element}
      class="menu"
      onKeyDown={(event) => {
        if (event.key !== "Escape" || !element.current?.open) return;
        element.current.open = false;
        element.current.querySelector("summary")?.focus();
        event.stopPropagation();
      }}
      onClick={(event) => {
        if (event.target instanceof Element && event.target.closest("[data-closes]")) element.current!.open = false;
      }}
    >
      <summary class="icon-button" title={label} aria-label={label}>
        <Icon name={icon} />
        {text !== undefined && <span>{text}</span>}
      </summary>
      <div class="menu-body">{children}</div>
    </details>
  );
}
