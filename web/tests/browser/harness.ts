// Pages in Debian's Chromium, served from this machine. A request that leaves it, an error or a breach of the page's policy
// fails the test.
import { existsSync, mkdtempSync, readFileSync, rmSync } from "node:fs";
import { createServer, type Server } from "node:http";
import type { AddressInfo } from "node:net";
import { tmpdir } from "node:os";
import { extname, join, normalize, resolve } from "node:path";
import { chromium, type BrowserContext, type BrowserContextOptions, type Page } from "playwright-core";
import { build } from "vite";

const web = resolve(import.meta.dirname, "../..");
const types: Readonly<Record<string, string>> = { ".html": "text/html", ".js": "text/javascript", ".svg": "image/svg+xml", ".webmanifest": "application/manifest+json" };

/** Builds the page (or the page of `root`) as it is given to people; the folder that it lies in. */
export async function built(root = "page"): Promise<string> {
  const folder = resolve(web, "../build", root === "page" ? "web" : "web-rooms");
  const configFile = join(web, "vite.config.ts");
  await build({ configFile, root: join(web, root), build: { outDir: folder, emptyOutDir: true }, logLevel: "warn" });
  return folder;
}

function serve(folder: string): Promise<Server> {
  const server = createServer((request, response) => {
    const path = normalize(new URL(request.url ?? "/", "http://localhost").pathname);
    const file = join(folder, path === "/" ? "index.html" : path);
    const found = existsSync(file);
    const status = found ? 200 : path === "/favicon.ico" ? 204 : 404; // browsers ask for it unasked
    response.writeHead(status, { "content-type": types[extname(file)] ?? "application/octet-stream" });
    response.end(found ? readFileSync(file) : "");
  });
  return new Promise((done) => server.listen(0, "127.0.0.1", () => done(server)));
}

/** A browser with a profile of its own, which lives as long as the test wants it. */
export class Browser {
  /** What went wrong in its pages, beside what a test expects. */
  readonly faults: string[] = [];
  readonly address: string;
  private readonly server: Server;
  private readonly profile: string;
  private context: BrowserContext;

  private constructor(server: Server, profile: string, context: BrowserContext) {
    this.server = server;
    this.address = `http://localhost:${(server.address() as AddressInfo).port}/`;
    this.profile = profile;
    this.context = context;
    this.watch();
  }

  static async open(folder: string, options: BrowserContextOptions = {}): Promise<Browser> {
    const profile = mkdtempSync(join(tmpdir(), "profile-"));
    return new Browser(await serve(folder), profile, await Browser.launch(profile, options));
  }

  private static launch(profile: string, options: BrowserContextOptions): Promise<BrowserContext> {
    return chromium.launchPersistentContext(profile, {
      executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
      args: ["--no-sandbox", "--disable-component-update", "--disable-background-networking"],
      viewport: { width: 1440, height: 900 },
      locale: "en-GB",
      serviceWorkers: "block",
      ...options,
    });
  }

  /** The page's process ends, then the browser's; it is started anew with what is on the disk. */
  async crash(page: Page, options: BrowserContextOptions = {}): Promise<void> {
    const session = await page.context().newCDPSession(page);
    const crashed = page.waitForEvent("crash");
    session.send("Page.crash").catch(() => {}); // it never answers
    await crashed;
    await this.context.close();
    this.context = await Browser.launch(this.profile, options);
    this.watch();
  }

  async page(address = this.address): Promise<Page> {
    const page = await this.context.newPage();
    await page.goto(address);
    return page;
  }

  async close(): Promise<void> {
    await this.context.close();
    this.server.close();
    rmSync(this.profile, { recursive: true, force: true });
  }

  private watch(): void {
    this.context.on("request", (request) => {
      if (!request.url().startsWith(this.address) && !/^(data|blob|file):/.test(request.url())) this.faults.push(`asks for ${request.url()}`);
    });
    this.context.on("weberror", (error) => this.faults.push(String(error.error())));
    this.context.on("console", (message) => {
      if (message.type() === "error") this.faults.push(message.text());
    });
  }
}
