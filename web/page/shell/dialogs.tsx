import { dialog } from "../parts/dialog_choice.ts";
import { PatientsDialog } from "../patient/patients_dialog.tsx";
import { StudyDialog } from "../readings/study_dialog.tsx";
import { HelpDialog } from "./help_dialog.tsx";

export function Dialogs() {
  const close = (): void => {
    dialog.value = null;
  };
  if (dialog.value === "patients") return <PatientsDialog onClose={close} />;
  if (dialog.value === "study") return <StudyDialog onClose={close} />;
  if (dialog.value === "help") return <HelpDialog onClose={close} />;
  return null;
}
