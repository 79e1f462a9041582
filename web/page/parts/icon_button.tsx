import type { ReadonlySignal } from "@preact/signals";
import { Icon, type IconName } from "./icon.tsx";

interface Props {
  icon: IconName;
  label: string;
  onClick: () => void;
  disabled?: boolean | ReadonlySignal<boolean>;
  /** For buttons that stay down. */
  pressed?: boolean | ReadonlySignal<boolean>;
  /** Beside the picture, where there is room. */
  text?: string;
  id?: string;
}

export function IconButton({ icon, label, onClick, disabled, pressed, text, id }: Props) {
  return (
    <button
      type="button"
      class="icon-button"
      title={label}
      aria-label={label}
      onClick={onClick}
      {...(id !== undefined && { id })}
      {...(disabled !== undefined && { disabled })}
      {...(pressed !== undefined && { "aria-pressed": pressed })}
    >
      <Icon name={icon} />
      {text !== undefined && <span>{text}</span>}
    </button>
  );
}
