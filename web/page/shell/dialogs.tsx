import { signal } from "@preact/signals";
import { PatientsDialog } from "../patient/patients_dialog.tsx";
import { HelpDialog } from "./help_dialog.tsx";

export const dialog = signal<"patients" | "help" | null>(null);

export function Dialogs() {
  const close = (): void => {
    dialog.value = null;
  };
  if (dialog.value === "patients") return <PatientsDialog onClose={close} />;
  if (dialog.value === "help") return <HelpDialog onClose={close} />;
  return null;
}
