// Puts scripts and styles into the HTML file, and a policy into its head that lets nothing leave the machine.
import { createHash } from "node:crypto";
import { relative, resolve } from "node:path";
import type { Plugin } from "vite";

function hash(text: string): string {
  return `'sha256-${createHash("sha256").update(text).digest("base64")}'`;
}

// Nothing is fetched, posted or framed; only the scripts and styles of the file itself run. Workers and pictures are
// made in the page. 'self' is for the service worker and the manifest where the page is served.
function policy(scripts: string[], styles: string[]): string {
  return [
    "default-src 'none'",
    `script-src ${scripts.map(hash).join(" ")} 'wasm-unsafe-eval'`,
    `style-src ${styles.map(hash).join(" ")}`,
    "img-src 'self' blob: data:",
    "worker-src 'self' blob:",
    "manifest-src 'self'",
    "connect-src 'none'",
    "base-uri 'none'",
    "form-action 'none'",
  ].join("; ");
}

/** Notes the files that the page, or a worker of it, is made of: what is packed has to be told with its licences. */
export function noteModules(modules: Set<string>): Plugin {
  const project = resolve(import.meta.dirname, "..");
  return {
    name: "note-modules",
    apply: "build",
    generateBundle(_options, bundle) {
      for (const file of Object.values(bundle)) {
        if (file.type !== "chunk") continue;
        for (const [name, { renderedLength }] of Object.entries(file.modules))
          if (renderedLength > 0) modules.add(relative(project, name.replaceAll("\0", "").replace(/\?.*/, "")));
      }
    },
  };
}

/** The page as one file, and beside it `modules.txt`, what was noted. */
export function oneFile(modules: ReadonlySet<string>): Plugin {
  return {
    name: "one-file",
    apply: "build",
    enforce: "post",
    generateBundle(_options, bundle) {
      const page = bundle["index.html"];
      if (page?.type !== "asset") throw new Error("index.html is missing from the build");
      const scripts: string[] = [];
      const styles: string[] = [];
      let html = String(page.source);
      html = html.replace(/\s*<link rel="stylesheet"[^>]*>/g, "").replace(/\s*<script type="module"[^>]*src=[^>]*><\/script>/g, "");
      for (const [name, file] of Object.entries(bundle)) {
        if (file.type === "chunk") scripts.push(file.code.trim().replaceAll("</script", "<\\/script"));
        else if (name.endsWith(".css")) styles.push(String(file.source).trim());
        else continue;
        delete bundle[name];
      }
      const head =
        `<meta http-equiv="Content-Security-Policy" content="${policy(scripts, styles)}">` +
        styles.map((style) => `<style>${style}</style>`).join("");
      const body = scripts.map((script) => `<script type="module">${script}</script>`).join("");
      this.emitFile({ type: "asset", fileName: "modules.txt", source: [...modules].sort().join("\n") + "\n" });
      page.source = html.replace(/<meta charset[^>]*>/, (charset) => charset + head).replace("</body>", () => `${body}</body>`);
    },
  };
}
