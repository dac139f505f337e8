// Draws chart documents with the library that the documents' grammar comes with, in node, without a browser.
//
//   node draw_charts.js FOLDER < documents     FOLDER holds vega.min.js and vega-lite.min.js
//
// Reads a JSON array of documents; writes a JSON array of {warnings, titles, lines}, where `lines` is the number of points of
// each line drawn.
const fs = require('fs');
const path = require('path');
const vm = require('vm');

for (const file of ['vega.min.js', 'vega-lite.min.js'])
  vm.runInThisContext(fs.readFileSync(path.join(process.argv[2], file), 'utf8'), {filename: file});
const {vega, vegaLite} = globalThis;

function collect(warnings) {
  const note = (...words) => { warnings.push(words.join(' ')); return logger; };
  const quiet = () => logger;
  const logger = {level: quiet, error: note, warn: note, info: quiet, debug: quiet};
  return logger;
}

async function draw(document) {
  const warnings = [];
  const logger = collect(warnings);
  const spec = vegaLite.compile(document, {logger}).spec;
  const view = new vega.View(vega.parse(spec), {renderer: 'none', logger});
  const svg = await view.toSVG();
  const lines = [...svg.matchAll(/aria-roledescription="line mark"[^>]* d="([^"]*)"/g)].map(match => match[1].match(/[ML]/g).length);
  return {warnings, lines, titles: [...svg.matchAll(/<text[^>]*>([^<]*)<\/text>/g)].map(match => match[1])};
}

Promise.all(JSON.parse(fs.readFileSync(0, 'utf8')).map(draw))
  .then(drawn => console.log(JSON.stringify(drawn)))
  .catch(error => { console.error(error); process.exit(1); });
