'use strict';
// formats_test.js FORMATS GOLDEN INSPECT LIBRARY: the descriptions in the folder FORMATS read every file in the folder
// GOLDEN as velum-inspect and the library do, and refuse what is damaged.

const assert = require('assert');
const { execFileSync, spawnSync } = require('child_process');
const fs = require('fs');
const path = require('path');
const test = require('node:test');

try {
  require.resolve('kaitai-struct-compiler');
} catch {
  console.log('SKIPPED: the descriptions need packages that scripts/setup formats installs');
  process.exit(77);
}
const { compiled, compiler, decoded, read } = require('./descriptions.js');

const [FORMATS, GOLDEN, INSPECT, LIBRARY] = process.argv.slice(2);
const NODE = '{9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3} node: text name, object origin, object links until null';
const OBJECTS = ['boxed_object_map', 'boxed_string', 'boxed_value_map', 'cycle', 'graph', 'null', 'reference', 'shared_object'];

const files = fs.readdirSync(GOLDEN).sort().map((name) => ({
  name, data: fs.readFileSync(path.join(GOLDEN, name)), is: OBJECTS.includes(name) ? 'objects' : 'map',
}));
const named = (name) => files.find((file) => file.name === name);
const parsers = compiled(['velum_objects', 'velum_values'], [__dirname, FORMATS])
  .then((all) => ({ map: all.VelumValues, objects: all.VelumObjects }));

function inspect(is, data) {
  const done = spawnSync(INSPECT, ['--json', '--full', '--as', is, '--class', NODE], { input: data, encoding: 'utf8' });
  assert.ok(done.status === 0 || done.status === 1, done.stderr);
  const exact = done.stdout.replace(/("tag":31,"value":)(-?\d+)/g, '$1"$2"');
  return { refused: done.status === 1, json: JSON.parse(exact) };
}

/// The form of descriptions.js for what velum-inspect gives.
function plain(it) {
  if (Array.isArray(it)) return it.map(plain);
  if (it === null || typeof it !== 'object') return it;
  const { kind, type, class_name, shared, ...rest } = it;
  const digits = (text) => Buffer.from(text).toString('hex').toUpperCase();
  const is_text = [1, 42].includes(rest.tag) || type === 'text';
  const { key, value, ...others } = rest;
  return {
    ...(key === undefined ? {} : { key: digits(key) }),
    ...(value === undefined ? {} : is_text ? { hex: digits(value) } : { value }),
    ...Object.fromEntries(Object.entries(others).map(([name, each]) => [name, plain(each)])),
  };
}

/// Objects by their classes alone.
function without_graph(it, classes = {}) {
  if (Array.isArray(it)) return it.map((each) => without_graph(each, classes));
  if (it === null || typeof it !== 'object') return it;
  if (it.number !== undefined) {
    classes[it.number] = it.class;
    without_graph(it.fields, classes);
    return it.class;
  }
  if (it.reference !== undefined) return classes[it.reference];
  return Object.fromEntries(Object.entries(it).map(([name, each]) => [name, without_graph(each, classes)]));
}

test('every file is read as velum-inspect reads it', async () => {
  for (const { name, data, is } of files) {
    assert.deepStrictEqual(decoded((await parsers)[is], data), plain(inspect(is, data).json), name);
  }
});

test('every map is read as the library reads it', async () => {
  const read = JSON.parse(execFileSync(LIBRARY, { encoding: 'utf8' }));
  const maps = files.filter(({ is }) => is === 'map');
  assert.deepStrictEqual(Object.keys(read).sort(), maps.map(({ name }) => name));
  for (const { name, data } of maps) {
    assert.deepStrictEqual(without_graph(decoded((await parsers).map, data)), read[name], name);
  }
});

test('matrices have the rows of their types', async () => {
  const { map } = await parsers;
  for (const { name, data } of files.filter((file) => file.name.startsWith('tag_'))) {
    const [, rows, columns] = /tessa::mat<\w+,(\d),(\d)>/.exec(inspect('map', data).json.entries[0].type) ?? [];
    const { content } = read(map, data).entries[0].value;
    if (rows !== undefined && content.rows !== undefined) {
      assert.deepStrictEqual(content.rows.map((row) => row.elements.length), Array(+rows).fill(+columns), name);
    }
  }
});

async function refused(is, data) {
  const { map, objects } = await parsers;
  try {
    decoded(is === 'map' ? map : objects, data);
    return false;
  } catch (error) {
    assert.ok(!(error instanceof TypeError), error.stack); // a fault of the test
    return true;
  }
}

test('what is cut off is refused by both', async () => {
  for (const { name, data, is } of files) {
    for (const length of [data.length - 1, data.length >> 1]) {
      const cut = data.subarray(0, length);
      assert.ok(await refused(is, cut), `${name} cut at ${length}`);
      assert.ok(inspect(is, cut).refused, `velum-inspect: ${name} cut at ${length}`);
    }
  }
});

// File, place of a word, and what it becomes: tags that no type has, kinds of objects, a class that nobody described.
const WRONG = [
  ...[0, 30, 33, 39, 48, 0x80000003].map((tag) => ['tag_3', 11, tag]),
  ['tag_46', 19, 0], ['tag_40', 23, 30], ['tag_47', 15, 3],
  ['boxed_string', 0, 3], ['boxed_string', 0, 0x01000000], ['boxed_string', 8, 1], ['boxed_object_map', 40, 4],
];

test('wrong tags and classes are refused by both', async () => {
  for (const [name, place, word] of WRONG) {
    const { data, is } = named(name);
    const wrong = Buffer.from(data);
    wrong.writeUInt32LE(word, place);
    assert.ok(await refused(is, wrong), `${name} with ${word} at ${place}`);
    assert.ok(inspect(is, wrong).refused, `velum-inspect: ${name} with ${word} at ${place}`);
  }
});

test('the published description of classes refuses those that it does not know', async () => {
  const { VelumObjects } = await compiled(['velum_objects'], [FORMATS]);
  assert.ok(decoded(VelumObjects, named('shared_object').data).objects.length === 1);
  assert.throws(() => decoded(VelumObjects, named('graph').data), { name: 'ValidationExprError' });
});

test('the descriptions can be compiled for other languages', async () => {
  for (const language of ['cpp_stl', 'csharp', 'go', 'java', 'python', 'rust']) {
    const load = (name) => require('yaml').parse(fs.readFileSync(path.join(FORMATS, `${name}.ksy`), 'utf8'));
    const made = await compiler.compile(language, load('velum_objects'), { importYaml: async (name) => load(name) }, false);
    assert.ok(Object.keys(made).length >= 3, language);
  }
});
