import { expect, test } from "vitest";
import { type Work, emptyDocument } from "../../page/state/document.ts";
import { History } from "../../page/state/history.ts";
import { placed } from "../../page/state/work.ts";
import { type Turn, turnedWork } from "../../page/view/orientation.ts";

const table = new Set(["S", "N"]);
const at = (x: number) => (work: Work) => placed(work, "S", [x, 2 * x], table);

test("undo goes back through every step and redo through them again; a drag is one step", () => {
  const history = new History(emptyDocument("lateral", []));
  const works = [history.document.value.work];
  for (let step = 1; step <= 300; ++step) {
    for (let part = 0; part < step % 4; ++part) history.preview(at(1000 * step + part));
    history.change(at(step));
    works.push(history.document.value.work);
  }
  for (const work of works.slice(0, -1).reverse()) {
    history.undo();
    expect(history.document.value.work).toBe(work);
  }
  expect(history.canUndo.value).toBe(false);
  for (const work of works.slice(1)) {
    history.redo();
    expect(history.document.value.work).toBe(work);
  }
  history.undo();
  history.change(at(-1));
  expect(history.canRedo.value).toBe(false);
});

test("a step that is given up leaves nothing, and how the film is looked at is not undone", () => {
  const history = new History(emptyDocument("lateral", []));
  const before = history.document.value.work;
  history.preview(at(5));
  history.cancel();
  expect(history.document.value.work).toBe(before);
  expect(history.canUndo.value).toBe(false);
  history.change(at(6));
  history.look({ labels: false });
  history.undo();
  expect(history.document.value.view.labels).toBe(false);
});

test("turns that cancel each other bring every point back", () => {
  const stored = { width: 2000, height: 2400 };
  const start = placed(emptyDocument("lateral", []).work, "S", [850.25, 756], table);
  const ways: Turn[][] = [
    ["mirror", "mirror"],
    ["upside_down", "upside_down"],
    ["clockwise", "anticlockwise"],
    ["clockwise", "clockwise", "clockwise", "clockwise"],
    ["mirror", "clockwise", "mirror", "clockwise"],
    ["mirror", "upside_down", "clockwise", "clockwise"],
  ];
  for (const way of ways) {
    let work = start;
    let size = stored;
    for (const turn of way) {
      work = turnedWork(work, turn, size);
      if (turn.endsWith("clockwise")) size = { width: size.height, height: size.width };
    }
    expect(work, way.join(" ")).toEqual(start);
  }
});
