// Bundles a module of the viewer in memory and loads it, so that tests call the sources as they are.
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

// The tests run beside their packages in the build tree, so the environment says where the viewer is.
const viewer = process.env.VIEWER ?? join(dirname(fileURLToPath(import.meta.url)), "../../viewer");
const modules = process.env.VIEWER_MODULES ?? join(viewer, "node_modules");
const { build } = createRequire(join(modules, "package.json"))(join(modules, "esbuild"));

/** Loads a module by its path in viewer/src, such as "data/track.ts". */
export async function load(path) {
  const result = await build({
    entryPoints: [join(viewer, "src", path)],
    bundle: true,
    write: false,
    format: "esm",
    platform: "neutral",
    target: "node18",
    nodePaths: [modules],
  });
  const code = Buffer.from(result.outputFiles[0].contents).toString("base64");
  return import(`data:text/javascript;base64,${code}`);
}
