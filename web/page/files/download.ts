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
