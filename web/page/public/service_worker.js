// Keeps the page for when there is no network. It asks the network first, so that a new version comes at once.
const kept = "digitiser";
const files = ["./index.html", "./manifest.webmanifest", "./icon.svg"];

self.addEventListener("install", (event) => {
  event.waitUntil(caches.open(kept).then((cache) => cache.addAll(files)).then(() => self.skipWaiting()));
});

self.addEventListener("activate", (event) => event.waitUntil(self.clients.claim()));

self.addEventListener("fetch", (event) => {
  if (event.request.method !== "GET" || new URL(event.request.url).origin !== location.origin) return;
  event.respondWith(
    fetch(event.request)
      .then(async (answer) => {
        if (answer.ok) await (await caches.open(kept)).put(event.request, answer.clone());
        return answer;
      })
      .catch(async () => (await caches.match(event.request)) ?? (await caches.match("./index.html")) ?? Response.error()),
  );
});
