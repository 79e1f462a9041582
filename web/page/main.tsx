import { render } from "preact";
import "./style/page.css";
import { start } from "./shell/start.ts";
import { App } from "./shell/app.tsx";
import { watchPrinting } from "./print/printing.tsx";

render(<App />, document.getElementById("page")!);
watchPrinting(document.getElementById("print")!);
void start();
