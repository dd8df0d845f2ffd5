'use strict';
// Parsers made of docs/formats, and what they read in a form that can be compared.

const fs = require('fs');
const os = require('os');
const path = require('path');
const YAML = require('yaml');
const compiler = require('kaitai-struct-compiler');
const KaitaiStream = require('kaitai-struct/KaitaiStream');

/// The compiled descriptions of these names; each is taken from the first of the folders that has it.
async function compiled(names, folders) {
  const load = (name) => {
    const folder = folders.find((each) => fs.existsSync(path.join(each, `${name}.ksy`)));
    return YAML.parse(fs.readFileSync(path.join(folder, `${name}.ksy`), 'utf8'));
  };
  const out = fs.mkdtempSync(path.join(os.tmpdir(), 'velum-formats-'));
  try {
    for (const name of names) {
      const files = await compiler.compile('javascript', load(name), { importYaml: async (each) => load(each) }, false);
      for (const file in files) fs.writeFileSync(path.join(out, file), files[file]);
    }
    return Object.assign({}, ...fs.readdirSync(out).map((file) => require(path.join(out, file))));
  } finally {
    fs.rmSync(out, { recursive: true });
  }
}

class ExactStream extends KaitaiStream {
  constructor(data) {
    super(Uint8Array.from(data).buffer); // a Buffer is a window on other bytes too
  }

  readS8le() {
    return this.readBytes(8).reduceRight((all, byte) => (all << 8n) | BigInt(byte), 0n);
  }
}

const hex = (bytes) => Buffer.from(bytes).toString('hex').toUpperCase();
const number = (value) => (Number.isFinite(value) ? value : String(value));
const guid = (bytes) => `{${hex(bytes).replace(/(.{8})(.{4})(.{4})(.{4})/, '$1-$2-$3-$4-')}}`;
const flat = (each) => (each.rows ? each.rows.flatMap(flat) : each.elements.map(number));
const several = (value) => ({ value: value.count === 1 ? flat(value)[0] : flat(value) });

/// By the type in the description: the form that velum-inspect gives, but for texts, which are hexadecimal digits.
const FORMS = {
  Text: (text) => ({ hex: hex(text.bytes) }),
  Truth: (truth) => ({ value: truth.isTrue }),
  Ints: several,
  Floats: several,
  Doubles: several,
  LongLong: (it) => ({ value: BigInt.asIntN(64, it.number).toString() }),
  RowsOfFloats: (rows) => ({ value: flat(rows) }),
  RowsOfDoubles: (rows) => ({ value: flat(rows) }),
  AffineSpace3: (space) => ({ value: [...flat(space.linear), ...flat(space.origin)] }),
  Guid: (id) => ({ value: guid(id.bytes) }),
  ByteVector: (it) => ({ size: it.length, hex: hex(it.bytes) }),
  VelumValues: (map) => ({ entries: map.entries.map(form) }),
  Maps: (it) => ({ maps: it.maps.map(form) }),
  Values: (it) => ({ values: it.values.map(form) }),
  Entry: (entry) => ({ key: hex(entry.key.bytes), ...form(entry.value) }),
  Value: (value) => ({ tag: value.tag, ...form(value.content) }),

  VelumObject: (it) => ({ object: it.content === undefined ? null : form(it.content) }),
  Reference: (reference) => ({ reference: reference.number }),
  NewObject: (it) => ({ number: it.number, class: guid(it.classId.bytes), fields: form(it.stages) }),
  VelumClasses: (classes) => form(classes.stages),
  Version: (version) => ({ value: version.word }),
  BoxedString: (it) => fields({ version: it.version, text: it.text }),
  BoxedValueMap: (it) => fields({ version: it.version, map: it.map }),
  BoxedObjectMap: (it) => [...fields({ version: it.version }), { field: 'objects', entries: it.entries.map(form) }],
  ObjectEntry: (entry) => ({ key: hex(entry.key.bytes), ...form(entry.object) }),
  Node: (node) => [...fields({ name: node.name, origin: node.origin }), { field: 'links', elements: node.links.map(form) }],

  VelumObjects: (file) => ({ objects: file.objects.map((each) => form(each).object) }),
};

const form = (it) => FORMS[it.constructor.name](it);
const fields = (all) => Object.entries(all).map(([field, it]) => ({ field, ...form(it) }));

/// What `parser` reads in `data`, to the last byte; or it throws.
function read(parser, data) {
  const stream = new ExactStream(data);
  const file = new parser(stream);
  if (!stream.isEof()) throw new Error(`stopped at byte ${stream.pos} of ${data.length}`);
  return file;
}

const decoded = (parser, data) => form(read(parser, data));

module.exports = { compiled, compiler, decoded, read };
