// Builds the page: checks the types, bundles and inlines everything into one template, and writes the licences of
// what is bundled beside it.
//
//   node build.mjs [FOLDER]     page.html and page-licenses.txt go to FOLDER, "dist" when none is given

import { createHash } from "node:crypto";
import { existsSync, mkdirSync, readFileSync, readdirSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const here = dirname(fileURLToPath(import.meta.url));
const target = process.argv[2] ?? join(here, "dist");

// NiiVue reads volumes of a remote store with these; the page reads nothing from anywhere.
const leftOut = {
  name: "left-out",
  setup(builder) {
    builder.onResolve({ filter: /^(zarrita|numcodecs)$/ }, ({ path }) => ({ path, namespace: "left-out" }));
    builder.onLoad({ filter: /.*/, namespace: "left-out" }, () => ({ contents: "export {};", loader: "js" }));
  },
};

async function bundle(entry) {
  const result = await build({
    absWorkingDir: here,
    entryPoints: [entry],
    bundle: true,
    minify: true,
    format: "iife",
    target: ["es2022"],
    legalComments: "none", // the licences stand in the page in full
    charset: "utf8",
    metafile: true,
    write: false,
    logLevel: "warning",
    logOverride: { "import-is-undefined": "silent" }, // of what is left out
    plugins: [leftOut],
    loader: { ".css": "css" },
    outdir: target,
  });
  return { text: result.outputFiles[0].text, inputs: Object.keys(result.metafile.inputs) };
}

function packagesOf(inputs) {
  const names = new Set();
  for (const input of inputs) {
    const found = input.match(/^node_modules\/((?:@[^/]+\/)?[^/]+)\//);
    if (found) {
      names.add(found[1]);
    }
  }
  return [...names].sort();
}

function licenseOf(name) {
  const folder = join(here, "node_modules", name);
  const { version, license } = JSON.parse(readFileSync(join(folder, "package.json"), "utf8"));
  const file = readdirSync(folder).find((entry) => /^licen[cs]e/i.test(entry));
  const stored = join(here, "licenses", `${name.replace("/", "+")}.txt`);
  const path = file !== undefined ? join(folder, file) : stored;
  if (!existsSync(path)) {
    throw new Error(`${name} brings no licence; put its text into ${stored}.`);
  }
  return `${name} ${version} (${license})\n\n${readFileSync(path, "utf8").trim()}\n`;
}

const hash = (text) => `'sha256-${createHash("sha256").update(text, "utf8").digest("base64")}'`;

const script = await bundle("src/main.ts");
const style = await bundle("src/styles.css");
const rule = "=".repeat(78);
const licenses = packagesOf([...script.inputs, ...style.inputs])
  .map(licenseOf)
  .join(`\n${rule}\n\n`);

const policy = [
  "default-src 'none'",
  `script-src ${hash(script.text)}`,
  `style-src ${hash(style.text)}`,
  "img-src data: blob:",
  "base-uri 'none'",
  "form-action 'none'",
].join("; ");
const parts = {
  policy,
  style: style.text,
  licenses: licenses.replaceAll("&", "&amp;").replaceAll("<", "&lt;"),
  script: script.text,
};
const page = readFileSync(join(here, "src/page.html"), "utf8").replace(
  /\{\{(policy|style|licenses|script)\}\}/g,
  (_, name) => parts[name],
);
mkdirSync(target, { recursive: true });
writeFileSync(join(target, "page.html"), page);
writeFileSync(join(target, "page-licenses.txt"), licenses);
console.log(`${join(target, "page.html")}: ${(Buffer.byteLength(page) / 1e6).toFixed(2)} MB`);
