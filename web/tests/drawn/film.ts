// A radiograph drawn from the made-up face of outlines/lateral.json: soft tissue, bone and teeth as thicknesses that weaken X-rays,
// blurred as a film blurs, with noise and a ruler. Of nobody, and where every landmark lies is known.
import { readFileSync } from "node:fs";
import { resolve } from "node:path";

export type Point = readonly [x: number, y: number];

interface Curve {
  readonly name: string;
  readonly closed: boolean;
  readonly points: readonly Point[];
}

interface Face {
  readonly mm_per_pixel: number;
  readonly curves: readonly Curve[];
}

const project = resolve(import.meta.dirname, "../../..");
const face = JSON.parse(readFileSync(resolve(project, "outlines/lateral.json"), "utf8")) as Face;
const sample = JSON.parse(readFileSync(resolve(project, "examples/samples/lateral-average.json"), "utf8")) as {
  readonly landmarks: Readonly<Record<string, Point>>;
  readonly vertebrae: Readonly<Record<string, Point>>;
};

/** How a film came out: what of the X-rays reached it, and how much of that is chance. */
export const exposures = {
  normal: { dose: 1, noise: 0.008 },
  under: { dose: 0.45, noise: 0.02 },
  over: { dose: 2.2, noise: 0.005 },
} as const;

export interface DrawnFilm {
  readonly width: number;
  readonly height: number;
  readonly mmPerPixel: number;
  /** 16 bits, bone bright. */
  readonly samples: Uint16Array;
  /** Those of the sample case of this face, and the corners of its vertebrae. */
  readonly landmarks: Readonly<Record<string, Point>>;
  /** Ends of the ruler's first and last line, `rulerMm` apart. */
  readonly ruler: readonly [Point, Point];
  readonly rulerMm: number;
}

/** Pixels of a plane of thicknesses. */
class Plane {
  readonly values: Float32Array;
  readonly width: number;
  readonly height: number;

  constructor(width: number, height: number) {
    this.width = width;
    this.height = height;
    this.values = new Float32Array(width * height);
  }

  /** Adds to all that a closed polygon holds (even-odd); edges to a fraction of a pixel along the row. */
  fill(polygon: readonly Point[], amount: number): void {
    const rows = polygon.map(([, y]) => y);
    const top = Math.max(0, Math.floor(Math.min(...rows)));
    const bottom = Math.min(this.height - 1, Math.ceil(Math.max(...rows)));
    for (let y = top; y <= bottom; ++y) {
      const crossings: number[] = [];
      polygon.forEach(([x1, y1], i) => {
        const [x2, y2] = polygon[(i + 1) % polygon.length] ?? [x1, y1];
        if (y1 <= y + 0.5 !== y2 <= y + 0.5) crossings.push(x1 + ((y + 0.5 - y1) / (y2 - y1)) * (x2 - x1));
      });
      crossings.sort((one, other) => one - other);
      for (let i = 0; i + 1 < crossings.length; i += 2) this.addRow(y, crossings[i] ?? 0, crossings[i + 1] ?? 0, amount);
    }
  }

  /** Adds along a line, `width` pixels wide. */
  stroke(line: readonly Point[], width: number, amount: number): void {
    const touched = new Map<number, number>();
    const radius = width / 2;
    line.slice(1).forEach(([x2, y2], i) => {
      const [x1, y1] = line[i] ?? [x2, y2];
      const length = Math.hypot(x2 - x1, y2 - y1);
      for (let along = 0; along <= length; along += 0.5) {
        const part = length === 0 ? 0 : along / length;
        const [cx, cy] = [x1 + part * (x2 - x1), y1 + part * (y2 - y1)];
        for (let y = Math.max(0, Math.ceil(cy - radius)); y <= Math.min(this.height - 1, cy + radius); ++y) {
          for (let x = Math.max(0, Math.ceil(cx - radius)); x <= Math.min(this.width - 1, cx + radius); ++x) {
            const near = 1 - Math.hypot(x - cx, y - cy) / (radius + 0.5);
            const at = y * this.width + x;
            if (near > (touched.get(at) ?? 0)) touched.set(at, near);
          }
        }
      }
    });
    for (const [at, near] of touched) this.values[at] = (this.values[at] ?? 0) + amount * Math.min(1, 1.6 * near);
  }

  /** Two passes of a running mean of 2 * radius + 1 pixels, in both directions. */
  blur(radius: number): this {
    for (let pass = 0; pass < 2; ++pass) {
      for (let y = 0; y < this.height; ++y) this.meanAlong(y * this.width, 1, this.width, radius);
      for (let x = 0; x < this.width; ++x) this.meanAlong(x, this.width, this.height, radius);
    }
    return this;
  }

  add(other: Plane, factor = 1): void {
    for (let i = 0; i < this.values.length; ++i) this.values[i] = (this.values[i] ?? 0) + factor * (other.values[i] ?? 0);
  }

  private addRow(y: number, from: number, to: number, amount: number): void {
    const first = Math.max(0, Math.floor(from));
    const last = Math.min(this.width - 1, Math.floor(to));
    for (let x = first; x <= last; ++x) {
      const covered = Math.min(x + 1, to) - Math.max(x, from);
      const at = y * this.width + x;
      this.values[at] = (this.values[at] ?? 0) + amount * Math.max(0, covered);
    }
  }

  private meanAlong(start: number, step: number, count: number, radius: number): void {
    const line = new Float32Array(count);
    for (let i = 0; i < count; ++i) line[i] = this.values[start + i * step] ?? 0;
    const at = (i: number): number => line[Math.min(Math.max(i, 0), count - 1)] ?? 0;
    let sum = 0;
    for (let i = -radius; i <= radius; ++i) sum += at(i);
    for (let i = 0; i < count; ++i) {
      this.values[start + i * step] = sum / (2 * radius + 1);
      sum += at(i + radius + 1) - at(i - radius);
    }
  }
}

/** Points on a uniform Catmull-Rom curve, as outlines are drawn. */
function smooth({ points, closed }: Curve): Point[] {
  const count = points.length;
  const at = (i: number): Point => points[closed ? (i + count) % count : Math.min(Math.max(i, 0), count - 1)] ?? [0, 0];
  const line: Point[] = [];
  for (let i = 0; i < (closed ? count : count - 1); ++i) {
    const [a, b, c, d] = [at(i - 1), at(i), at(i + 1), at(i + 2)];
    for (let step = 0; step < 12; ++step) {
      const t = step / 12;
      const along = (axis: 0 | 1): number =>
        b[axis] + 0.5 * t * (c[axis] - a[axis] + t * (2 * a[axis] - 5 * b[axis] + 4 * c[axis] - d[axis] + t * (3 * (b[axis] - c[axis]) + d[axis] - a[axis])));
      line.push([along(0), along(1)]);
    }
  }
  if (!closed) line.push(at(count - 1));
  return line;
}

/** The same chance every time: xorshift. From 0 to 1. */
function chance(seed: number): () => number {
  let state = seed | 0 || 1;
  return () => {
    state ^= state << 13;
    state ^= state >>> 17;
    state ^= state << 5;
    return (state >>> 0) / 2 ** 32;
  };
}

export interface Drawing {
  readonly width?: number;
  readonly height?: number;
  readonly exposure?: keyof typeof exposures;
  readonly seed?: number;
}

/** Faces right, a tenth of a millimetre a pixel. A smaller film shows the middle of it. */
export function drawFilm({ width = 2400, height = 3000, exposure = "normal", seed = 1 }: Drawing = {}): DrawnFilm {
  const origin: Point = [(width - 2400) / 2 + 260, (height - 3000) / 2 + 330];
  const placed = ([x, y]: Point): Point => [x + origin[0], y + origin[1]];
  const curve = (name: string): Point[] => {
    const found = face.curves.find((one) => one.name === name);
    if (!found) throw new Error(`no outline ${name}`);
    return smooth(found).map(placed);
  };
  const drawnBy = (...points: readonly Point[]): Point[] => smooth({ name: "", closed: false, points }).map(placed);
  const vault = drawnBy([1445, 70], [1190, -120], [850, -195], [480, -120], [200, 110], [85, 430], [110, 760], [250, 990], [420, 1120], [600, 1200]);
  const inside = drawnBy([1375, 90], [1150, -50], [850, -115], [520, -50], [270, 150], [165, 440], [185, 730], [300, 930], [450, 1050], [600, 1120]);
  const neck = drawnBy([1500, 70], [1220, -195], [850, -275], [440, -195], [130, 70], [5, 430], [35, 800], [130, 1100], [190, 1500], [160, 2000], [100, 2750]);
  const floor = drawnBy([950, 2320], [900, 2480], [880, 2750]);

  // Skin, thinner towards its edge; the airway.
  const soft = new Plane(width, height);
  const head = [...curve("Soft tissue profile"), ...floor, ...neck.reverse()];
  soft.fill(head, 0.25);
  soft.blur(45);
  const skin = new Plane(width, height);
  skin.fill(head, 0.22);
  skin.fill([...inside, placed([1006, 1016]), ...curve("Frontal bone, inner table").reverse()], 0.2); // the brain
  const rearWall = curve("Pharynx, rear wall").slice(30);
  skin.fill([...rearWall, ...rearWall.map(([x, y]): Point => [x + 95, y]).reverse()], -0.13);
  skin.fill(curve("Soft palate"), 0.06);
  skin.blur(5);
  soft.add(skin);

  // Bone: the bodies, denser along their outlines.
  const bone = new Plane(width, height);
  bone.fill([...curve("Mandible")], 0.28);
  bone.fill([...curve("Maxilla"), ...curve("Palate")], 0.22);
  bone.fill([...curve("Frontal bone"), ...curve("Frontal bone, inner table").reverse()], 0.3);
  bone.fill(curve("Frontal sinus"), -0.16);
  bone.fill(curve("Nasal bone"), 0.2);
  bone.fill([...vault, ...inside.reverse()], 0.3);
  bone.fill([...curve("Cranial base"), placed([1200, 860])], 0.2);
  for (const name of ["Vertebra C2", "Vertebra C3", "Vertebra C4", "Hyoid"]) bone.fill(curve(name), 0.26);
  bone.blur(3);
  const random = chance(seed);
  const grain = new Plane(width, height); // trabeculae
  for (let i = 0; i < grain.values.length; ++i) grain.values[i] = random() - 0.5;
  grain.blur(3);
  for (let i = 0; i < bone.values.length; ++i) bone.values[i] = (bone.values[i] ?? 0) * (1 + 1.3 * (grain.values[i] ?? 0));
  const edges = new Plane(width, height);
  for (const [name, thickness, amount] of [
    ["Mandible", 14, 0.16],
    ["Maxilla", 11, 0.2],
    ["Palate", 9, 0.12],
    ["Symphysis, inner", 9, 0.1],
    ["Cranial base", 10, 0.14],
    ["Sella turcica", 8, 0.16],
    ["Orbit", 10, 0.16],
    ["Key ridge", 12, 0.16],
    ["Pterygomaxillary fissure", 8, -0.1],
    ["Frontal bone", 8, 0.1],
    ["Nasal bone", 7, 0.12],
    ["Vertebra C2", 9, 0.14],
    ["Vertebra C3", 9, 0.16],
    ["Vertebra C4", 9, 0.16],
    ["Hyoid", 8, 0.12],
  ] as const)
    edges.stroke(curve(name), thickness, amount);
  edges.blur(1);

  const hard = new Plane(width, height);
  for (const tooth of ["Upper incisor", "Lower incisor", "Upper molar", "Lower molar"]) {
    const roots = curve(`${tooth}, ${tooth.endsWith("molar") ? "roots" : "root"}`);
    hard.fill(roots, 0.22);
    hard.fill(curve(`${tooth}, crown`), 0.45);
    hard.stroke(roots, 5, 0.08);
  }
  hard.stroke(curve("Ear rod"), 16, 1.1);
  // The ruler of the head holder, before the forehead: 100 mm, a line each millimetre.
  const perMm = 1 / face.mm_per_pixel;
  const rulerMm = 100;
  const [rulerX, rulerY] = [width - 170, Math.min(placed([0, 300])[1], height - rulerMm * perMm - 40)];
  hard.fill([[rulerX, rulerY - 30], [rulerX + 90, rulerY - 30], [rulerX + 90, rulerY + rulerMm * perMm + 30], [rulerX, rulerY + rulerMm * perMm + 30]], 0.12);
  for (let mm = 0; mm <= rulerMm; ++mm) {
    const y = rulerY + mm * perMm;
    hard.stroke([[rulerX, y], [rulerX + (mm % 10 === 0 ? 70 : mm % 5 === 0 ? 45 : 28), y]], 3, 1);
  }
  hard.blur(1);

  const whole = soft;
  for (const plane of [bone, edges, hard]) whole.add(plane);
  const { dose, noise } = exposures[exposure];
  const samples = new Uint16Array(width * height);
  for (let i = 0; i < samples.length; ++i) {
    // What reaches the detector, counted, and its logarithm as detectors give it.
    const through = dose * Math.exp(-2.1 * Math.max(0, whole.values[i] ?? 0));
    const counted = through * (1 + noise * 3.4 * (random() + random() + random() - 1.5) * Math.sqrt(1 / through));
    const bright = 0.1 - 0.33 * Math.log(Math.max(counted, 1e-3));
    samples[i] = Math.min(65535, Math.max(0, Math.round(bright * 65535)));
  }
  return {
    width,
    height,
    mmPerPixel: face.mm_per_pixel,
    samples,
    landmarks: Object.fromEntries(Object.entries({ ...sample.landmarks, ...sample.vertebrae }).map(([name, at]) => [name, placed(at)])),
    ruler: [
      [rulerX + 35, rulerY],
      [rulerX + 35, rulerY + rulerMm * perMm],
    ],
    rulerMm,
  };
}
