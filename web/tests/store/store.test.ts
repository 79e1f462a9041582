// The store on a made-up IndexedDB; a real one, that is full or whose tab dies, is tried in tests/browser.
import { IDBFactory, IDBObjectStore } from "fake-indexeddb";
import "fake-indexeddb/auto";
import { afterEach, beforeEach, describe, expect, test, vi } from "vitest";
import { openStore } from "../../page/store/open_store.ts";
import { StoreError, type CaseEntry, type Patient, type SaveState, type Store } from "../../page/store/store.ts";

interface Paper {
  readonly landmarks: readonly number[];
}

let stores: Store<Paper>[] = [];

async function open(): Promise<Store<Paper>> {
  const store = await openStore<Paper>();
  stores.push(store);
  return store;
}

beforeEach(() => {
  vi.stubGlobal("indexedDB", new IDBFactory());
  vi.stubGlobal("navigator", {});
});

afterEach(() => {
  for (const store of stores) store.close();
  stores = [];
  vi.restoreAllMocks();
  vi.useRealTimers();
});

function patient(id: string, name = id): Patient {
  return { id, name, number: "", sex: "", birthDate: "" };
}

function entry(id: string, more: Partial<CaseEntry> = {}): CaseEntry {
  return { id, patient: "p", kind: "lateral", filmDate: "2020-01-01", film: null, landmarkCount: 0, changedAt: 1, ...more };
}

/** From now on each write fails as it does where there is no room; gives what ends that. */
function fillDisk(): () => void {
  const put = vi.spyOn(IDBObjectStore.prototype, "put").mockImplementation(() => {
    throw new DOMException("no room", "QuotaExceededError");
  });
  return () => put.mockRestore();
}

describe("saving", () => {
  test("keeps the last value of each case, whatever was given meanwhile", async () => {
    const store = await open();
    const states: SaveState["kind"][] = [];
    store.onSaveState((state) => states.push(state.kind));
    for (let i = 0; i < 100; ++i) store.saveCase(entry(i % 2 ? "odd" : "even"), { landmarks: [i] });
    expect(await store.settled()).toBe(true);
    expect(states.at(-1)).toBe("saved");
    const other = await open();
    expect((await other.openCase("even"))?.document).toEqual({ landmarks: [98] });
    expect((await other.openCase("odd"))?.document).toEqual({ landmarks: [99] });
  });

  test("loses nothing to a full disk: it is told, tried again, and a later change goes before an earlier", async () => {
    const store = await open();
    const makeRoom = fillDisk();
    vi.useFakeTimers({ toFake: ["setTimeout", "clearTimeout"] });
    store.saveCase(entry("a"), { landmarks: [1] });
    expect(await store.settled()).toBe(false);
    expect(store.saveState()).toMatchObject({ kind: "failed", why: "full" });
    store.saveCase(entry("b"), { landmarks: [2] });
    expect(await store.settled()).toBe(false);
    const film = await store.putFilm(new Blob(["film"]), "film.png");
    expect(await store.settled()).toBe(false);
    expect(await store.film(film)).toBeNull();
    makeRoom();
    vi.advanceTimersByTime(5_000);
    expect(await store.settled()).toBe(true);
    expect((await store.openCase("a"))?.document).toEqual({ landmarks: [1] });
    expect((await store.openCase("b"))?.document).toEqual({ landmarks: [2] });
    expect((await store.film(film))?.name).toBe("film.png");
    expect(store.saveState()).toEqual({ kind: "saved" });
  });

  test.each(["ours", "theirs"] as const)("notices that another tab was faster, and %s is kept", async (whose) => {
    const [one, other] = [await open(), await open()];
    one.saveCase(entry("a"), { landmarks: [0] });
    await one.settled();
    await other.openCase("a");
    one.saveCase(entry("a"), { landmarks: [1] });
    await one.settled();
    other.saveCase(entry("a"), { landmarks: [2] });
    expect(await other.settled()).toBe(false);
    expect(other.saveState()).toEqual({ kind: "failed", why: "conflict", detail: "a" });
    other.saveCase(entry("a"), { landmarks: [3] }); // work goes on
    await other.resolve("a", whose);
    expect(await other.settled()).toBe(true);
    expect(other.saveState().kind).toBe("saved");
    expect((await one.openCase("a"))?.document).toEqual({ landmarks: [whose === "ours" ? 3 : 1] });
  });

  test("is told to the other tabs", async () => {
    const [one, other] = [await open(), await open()];
    const heard = new Promise((resolve) => other.onOtherTab(resolve));
    one.saveCase(entry("a"), { landmarks: [] });
    expect(await heard).toBe("a");
  });
});

describe("the list", () => {
  test("has patients by name and their films by date", async () => {
    const store = await open();
    for (const name of ["Yamada", "Abe", "Sato"]) await store.putPatient(patient(name));
    for (const [id, filmDate] of [["first", "2019-05-01"], ["last", "2023-01-01"], ["second", "2021-02-03"]] as const)
      store.saveCase(entry(id, { patient: "Abe", filmDate }), { landmarks: [] });
    await store.settled();
    const list = await store.patients();
    expect(list.map((one) => one.patient.name)).toEqual(["Abe", "Sato", "Yamada"]);
    expect(list[0]?.cases.map((one) => one.id)).toEqual(["last", "second", "first"]);
  });

  test("loses a deleted patient's cases, and films that no one else has", async () => {
    const store = await open();
    const [own, shared] = await Promise.all(["own", "shared"].map((text) => store.putFilm(new Blob([text]), `${text}.png`)));
    for (const id of ["p", "q"]) await store.putPatient(patient(id));
    store.saveCase(entry("a", { film: own ?? "" }), { landmarks: [] });
    store.saveCase(entry("b", { film: shared ?? "" }), { landmarks: [] });
    store.saveCase(entry("c", { film: shared ?? "", patient: "q" }), { landmarks: [] });
    await store.settled();
    await store.deletePatient("p");
    expect(await store.openCase("a")).toBeNull();
    expect(await store.film(own ?? "")).toBeNull();
    expect((await store.patients()).map((one) => one.cases.length)).toEqual([1]);
    await store.deleteCase("c");
    expect(await store.film(shared ?? "")).toBeNull();
  });
});

describe("one file of everything", () => {
  async function filled(): Promise<Store<Paper>> {
    const store = await open();
    await store.putPatient(patient("p", "山田 太郎"));
    const film = await store.putFilm(new Blob([new Uint8Array([1, 2, 10, 4])], { type: "image/png" }), "film.png");
    expect(await store.putFilm(new Blob([new Uint8Array([1, 2, 10, 4])]), "again.png")).toBe(film);
    store.saveCase(entry("a", { film, changedAt: 5 }), { landmarks: [1.5, 2] });
    await store.settled();
    return store;
  }

  test("comes back whole on another machine, and a second time changes nothing", async () => {
    const file = await (await filled()).exportAll();
    vi.stubGlobal("indexedDB", new IDBFactory());
    const store = await open();
    expect(await store.importAll(file)).toEqual({ patients: 1, cases: 1, films: 1, left: 0 });
    expect(await store.importAll(file)).toEqual({ patients: 0, cases: 0, films: 0, left: 1 });
    const [one] = await store.patients();
    expect(one?.patient.name).toBe("山田 太郎");
    const kept = await store.openCase("a");
    expect(kept?.document).toEqual({ landmarks: [1.5, 2] });
    const film = await store.film(kept?.entry.film ?? "");
    expect(new Uint8Array((await film?.file.arrayBuffer()) ?? new ArrayBuffer(0))).toEqual(new Uint8Array([1, 2, 10, 4]));
  });

  test("does not take the place of what was changed later", async () => {
    const store = await filled();
    const file = await store.exportAll();
    store.saveCase(entry("a", { changedAt: 9 }), { landmarks: [7] });
    await store.settled();
    await store.importAll(file);
    expect((await store.openCase("a"))?.document).toEqual({ landmarks: [7] });
  });

  test("is refused wherever it is cut or changed, and nothing of it is written", async () => {
    const bytes = new Uint8Array(await (await (await filled()).exportAll()).arrayBuffer());
    vi.stubGlobal("indexedDB", new IDBFactory());
    const store = await open();
    const damaged = [...Array(bytes.length).keys()].map((cut) => bytes.slice(0, cut));
    for (const at of [0, 3, bytes.length - 1]) damaged.push(bytes.map((byte, i) => (i === at ? byte ^ 1 : byte)));
    damaged.push(Uint8Array.from([...bytes, 0]));
    for (const one of damaged) await expect(store.importAll(new Blob([one]))).rejects.toThrow(StoreError);
    fillDisk();
    await expect(store.importAll(new Blob([bytes]))).rejects.toMatchObject({ why: "full" });
    vi.restoreAllMocks();
    expect(await store.patients()).toEqual([]);
  });
});
