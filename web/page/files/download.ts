import type { Case } from "../../engine/engine.js";

/** Says nothing of the patient, nor does it repeat the name of the film's file, which may: names of files are seen by many. */
export function fileStem({ kind, film: date }: Case): string {
  return [kind, date].filter(Boolean).join(" ").replace(/[\\/:*?"<>|.\u0000-\u001f]/g, "_");
}

/** Hands bytes to the browser's own way of saving a file. */
export function download(content: Blob | Uint8Array | string, name: string, type = "application/octet-stream"): void {
  const blob = content instanceof Blob ? content : new Blob([content as BlobPart], { type });
  const address = URL.createObjectURL(blob);
  const link = document.createElement("a");
  link.href = address;
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(address), 60_000);
}
