// What happens once the page is seen.
import { batch } from "@preact/signals";
import { loadEngine } from "../../engine/engine.js";
import { openLast, store } from "../files/keeping.ts";
import { openFiles } from "../files/open.ts";
import { beginGuide } from "../place/guide.ts";
import { usualAnalyses } from "../results/usual_analyses.ts";
import { engine, folder, history } from "../state/desk.ts";
import { openStore } from "../store/open_store.ts";
import type { Document } from "../state/document.ts";
import { errorWords, sayError, words } from "../words/words.ts";

function isTyping(target: EventTarget | null): boolean {
  return target instanceof HTMLInputElement && !["range", "checkbox", "radio", "file"].includes(target.type);
}

function pageKeyDown(event: KeyboardEvent): void {
  if (!(event.ctrlKey || event.metaKey) || isTyping(event.target)) return;
  const key = event.key.toLowerCase();
  if (key === "z" && !event.shiftKey) history.undo();
  else if (key === "y" || (key === "z" && event.shiftKey)) history.redo();
  else if (key === "o") document.getElementById("file-picker")?.click();
  else return;
  event.preventDefault();
}

function paste(event: ClipboardEvent): void {
  const files = [...(event.clipboardData?.files ?? [])];
  if (files.length > 0) void openFiles(files);
}

async function startEngine(loading: ReturnType<typeof loadEngine>): Promise<void> {
  try {
    const ready = await loading;
    const shipped = ready.shippedFolder();
    batch(() => {
      folder.value = shipped;
      engine.value = ready;
      const { work, view } = history.document.peek();
      const analyses = usualAnalyses(shipped.analyses(work.case.kind));
      if (work.analyses.length === 0) history.begin({ work: { ...work, analyses }, view });
    });
  } catch (error) {
    sayError(words.peek().engineFailed(errorWords(error)));
  }
}

/** Where the page is served, it stays there without a network. */
function startServiceWorker(): void {
  if (location.protocol !== "https:" && location.hostname !== "localhost") return;
  const manifest = document.createElement("link");
  manifest.rel = "manifest";
  manifest.href = "manifest.webmanifest";
  document.head.append(manifest);
  navigator.serviceWorker?.register("service_worker.js").catch(() => {
    // The page works as before, with the network.
  });
}

/** The film or case that `cephtool digitise` has put into the page, in Base64. */
function givenFile(): File | null {
  const given = document.getElementById("given");
  const name = given?.dataset["name"];
  if (!given || name === undefined) return null;
  return new File([Uint8Array.from(atob(given.textContent), (digit) => digit.charCodeAt(0))], name);
}

const storePatienceMs = 2000;

function after(ms: number): Promise<void> {
  return new Promise((resolve) => setTimeout(resolve, ms));
}

/** Where the browser keeps nothing, or is slow to, the page works all the same, and says so. */
async function openedStore(): Promise<void> {
  store.value = await openStore<Document>().catch(() => null);
}

export async function start(): Promise<void> {
  addEventListener("keydown", pageKeyDown);
  addEventListener("paste", paste);
  const loading = loadEngine();
  await Promise.race([openedStore(), after(storePatienceMs)]);
  await startEngine(loading);
  const given = givenFile();
  try {
    if (given) await openFiles([given]);
    else await openLast();
  } catch (error) {
    sayError(error);
  }
  beginGuide();
  startServiceWorker();
}
