"""program_test.py PROGRAM GOLDEN MANUAL: what velum-inspect prints, and where, and how it ends."""

import json
import os
import pty
import re
import resource
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

PROGRAM, GOLDEN, MANUAL = sys.argv[1:4]
NODE = "{9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3} node: text name, object origin, object links until null"
NOTE = "{3F0C6A52-8D1E-4B97-A6C4-5E2B90D7F118} note: "


def text(value):
    data = value if isinstance(value, bytes) else value.encode()
    return struct.pack("<I", len(data)) + data


def entry(key, tag, payload=b""):
    return text(key) + struct.pack("<I", tag) + payload


def value_map(*entries):
    return struct.pack("<I", len(entries)) + b"".join(entries)


def new_object(number, clsid, stages):
    return struct.pack("<II", 2, number) + bytes.fromhex(clsid.strip("{}").replace("-", "")) + stages


def note(stages):
    return new_object(0, NOTE.split()[0], stages)


def run(*arguments, data=b""):
    done = subprocess.run([PROGRAM, *arguments], input=data, capture_output=True, timeout=60)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


HOUSE = value_map(
    entry("floors", 3, struct.pack("<i", 2)),
    entry("paint", 40, value_map(entry("a name", 1, text("ochre \u00e9\n")), entry("raw", 1, text(b"\xff\x00")))),
    entry("sizes", 46, struct.pack("<I", 18) + b"".join(struct.pack("<If", 4, i / 2) for i in range(18))),
    entry("photo", 45, struct.pack("<Q", 40) + bytes(range(40))),
    entry("at", 25, struct.pack("<3f", 1, float("nan"), float("-inf"))),
)

HOUSE_TEXT = """\
map, 5 entries
  floors: int 2
  paint: any_map, 2 entries
    "a name": std::string "ochre \u00e9\\n"
    raw: std::string "\\xFF\\x00"
  sizes: std::vector<boost::any>, 18 values
""" + "".join(f"    [{i}] float {i / 2:g}\n" for i in range(16)) + """\
    ... 2 more
  photo: byte_vector 000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F... of 40 bytes
  at: math::vec<float,3> (1, nan, -inf)
"""

GRAPH_TEXT = """\
object 0, node {9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3}
  name: text "first"
  origin: object 1, uany_map_obj_t {2D4AF8B5-DD75-43FC-A053-411A316F2C99}
    version: u32 65536
    map: map, 1 entry
      value: std::vector<boost::any>, 3 values
        [0] object 2, basic_string_t {43D4FF6A-038F-4D67-B193-8D21B14DA8BC}
          version: u32 65536
          text: text "some\\x00text"
        [1] null
        [2] reference to object 2
  links: object, up to a null
    [0] object 3, node {9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3}
      name: text "second"
      origin: null
      links: object, up to a null
        [0] reference to object 0, which is around it
        [1] object 4, basic_unknown_map_t {AD409247-FD65-4D5A-BC6B-90A224C55AEE}
          version: u32 65536
          objects: object_map, 1 object
            self: reference to object 4, which is around it
        [2] null
    [1] reference to object 2
    [2] null
null
reference to object 3
shared objects: 0 (1 reference), 2 (2 references), 3 (1 reference), 4 (1 reference)
"""

CYCLE_OFFSETS = """\
    begins     value
         0         0  object 0, basic_unknown_map_t {AD409247-FD65-4D5A-BC6B-90A224C55AEE}
        24        24    version: u32 65536
        28        28    objects: object_map, 1 object
        32        40      self: reference to object 0, which is around it
shared objects: 0 (1 reference)
"""

SHARED_DOT = """\
digraph velum {
  node [shape=box, fontname="monospace", fontsize=10]
  edge [fontname="monospace", fontsize=10]
  root0 [shape=point]
  root0 -> o0
  o0 -> o1 [label="map.value[0]"]
  o1 [label="1 basic_string_t\\lversion = 65536\\ltext = \\"some\\\\x00text\\"\\l"]
  o0 -> o1 [label="map.value[2]"]
  o0 [label="0 uany_map_obj_t\\lversion = 65536\\l"]
  o1 [style=bold]
}
"""

SHARED_SUMMARY = """\
type                           values           bytes
text                                1              13
u32                                 2               8
map                                 1               4
std::vector<boost::any>             1               4

around them             number           bytes
heads of objects             2              48
tags                         4              16
keys                         1               9
references                   1               8
nulls                        1               4

class                                                       objects           bytes
uany_map_obj_t {2D4AF8B5-DD75-43FC-A053-411A316F2C99}             1              73
basic_string_t {43D4FF6A-038F-4D67-B193-8D21B14DA8BC}             1              41

in all 114 bytes, 4 levels deep
"""

# What stands in the stream, and what the message says of it.
BROKEN = [
    (b"", 'byte 0: expected 4 bytes (a count), found the end of the stream'),
    (HOUSE[:45], 'byte 43, at paint: expected 6 bytes (a key of entry 0), found 2 bytes and the end of the stream'),
    (HOUSE[:-1], f'byte {len(HOUSE) - 12}, at at: expected 12 bytes (a number), found 11 bytes and the end of the stream'),
    (value_map(entry("a.b", 40, value_map(entry("", 48)))), 'byte 23, at "a.b"."": expected the tag of a type, found 48'),
    (value_map(entry("v", 46, struct.pack("<II", 2, 30))), 'byte 17, at v[0]: expected the tag of a type, found 30'),
    (value_map(entry("t", 1, struct.pack("<I", 2**32 - 1) + b"xyz")),
     'byte 17, at t: expected 4294967295 bytes (a text), found 3 bytes and the end of the stream'),
    (value_map(entry("o", 47, struct.pack("<I", 3))),
     'byte 13, at o: expected 0 for null, 1 for a reference or 2 for a new object, found 3'),
    (value_map(entry("o", 47, struct.pack("<II", 1, 7))), 'byte 17, at o: expected the number of an object before it, found 7'),
]


class Printing(unittest.TestCase):
    maxDiff = None

    def expect(self, arguments, output, data=b""):
        self.assertEqual(run(*arguments, data=data), (0, output, ""))

    def test_text(self):
        self.expect([], HOUSE_TEXT, HOUSE)
        self.expect(["-", "--as", "map"], HOUSE_TEXT + f"3 bytes follow from byte {len(HOUSE)} on\n", HOUSE + b"end")
        self.expect(["--start=2", "--count", "2"], HOUSE_TEXT * 2, b"VL" + HOUSE * 2)
        self.expect([os.path.join(GOLDEN, "graph"), "--class", NODE], GRAPH_TEXT)
        self.expect(["--offsets", os.path.join(GOLDEN, "cycle")], CYCLE_OFFSETS)

    def test_full_text_is_whole(self):
        whole = run("--full", data=HOUSE)[1]
        self.assertIn("    [17] float 8.5\n", whole)
        self.assertIn("222324252627\n", whole)
        long = value_map(entry("t", 1, text("\u00e9" * 150)))
        self.assertIn("\u00e9" * 100 + '"... of 300 bytes', run(data=long)[1])
        self.assertIn("\u00e9" * 150 + '"\n', run("-f", data=long)[1])

    # Names and texts that could be taken for something else where they are printed, and how they stand there.
    def test_odd_names(self):
        rows = [
            ("a\x7f\x9b31m", r'"a\x7F\xC2\x9B31m"', r'"a\u007F\u009B31m"'),
            ("\x00\x1b\t", r'"\x00\x1B\t"', r'"\u0000\u001B\t"'),
            ('say "\\N"', r'"say \"\\N\""', r'"say \"\\N\""'),
            ("&lt;\u202e\ufffe", r'"&lt;\xE2\x80\xAE\xEF\xBF\xBE"', r'"&lt;\u202E\uFFFE"'),
            ("\U0001f600 \u00e9", '"\U0001f600 \u00e9"', '"\U0001f600 \u00e9"'),
            (b"\xed\xa0\x80\xc0\x80\xf4\x90\x80\x80", r'"\xED\xA0\x80\xC0\x80\xF4\x90\x80\x80"', '"EDA080C080F4908080"'),
            ("", '""', '""'),
        ]
        for name, shown, as_json in rows:
            stored = text(name)
            boxed = new_object(1, "43D4FF6A038F4D67B1938D21B14DA8BC", struct.pack("<I", 0) + stored)
            data = new_object(0, "AD409247FD654D5ABC6B90A224C55AEE",
                              struct.pack("<II", 0, 1) + stored + boxed)
            printed = run(data=data)[1]
            self.assertIn(f"    {shown}: object 1, ", printed)
            self.assertIn(f"      text: text {shown}\n", printed)
            whole = run("--json", data=data)[1]
            self.assertIn(('"key_hex":' if isinstance(name, bytes) else '"key":') + as_json, whole)
            entry_of_map = json.loads(whole)["objects"][0]["fields"][1]["entries"][0]
            expected = name.hex().upper() if isinstance(name, bytes) else name
            self.assertEqual(entry_of_map.get("key", entry_of_map.get("key_hex")), expected)
            self.check_graph(run("--dot", data=data)[1], [f"objects.{shown}", f"text = {shown}"])

    def check_graph(self, graph, labels):
        self.assertEqual(graph.count("o0 -> o1"), 1)
        if shutil.which("dot") is None:
            return
        drawn = subprocess.run(["dot", "-Tsvg"], input=graph.encode(), capture_output=True, check=True)
        self.assertEqual(drawn.stderr, b"")
        texts = ["".join(each.itertext()).replace("\xa0", " ") for each in xml.etree.ElementTree.fromstring(drawn.stdout).iter()]
        for label in labels:
            self.assertIn(label, texts)

    def test_long_names_are_shortened(self):
        long = "k" * 99 + "\u00e9" * 99
        data = value_map(entry(long, 1, text(long)), entry("x" * 100000, 99))
        status, printed, messages = run(data=data)
        self.assertIn('"' + long[:149] + '"...: std::string "' + long[:149] + '"... of 297 bytes\n', printed)
        self.assertIn("xxx...", messages)
        self.assertLess(len(messages), 500)
        first = json.loads(run("--json", data=data)[1])["entries"][0]
        self.assertEqual((first["key"], first["key_shortened"], first["size"]), (long[:149], True, 297))
        self.assertIn(long + '": std::string "' + long + '"\n', run("--full", data=data)[1])

    def test_numbers_that_come_twice_are_told_apart(self):
        text_map = new_object(1, "43D4FF6A038F4D67B1938D21B14DA8BC", struct.pack("<II", 0, 0))
        one = new_object(0, "AD409247FD654D5ABC6B90A224C55AEE", struct.pack("<II", 0, 3) + text("a") + text_map +
                         text("b") + struct.pack("<II", 1, 1) + text("c") + struct.pack("<II", 1, 0))
        printed = run(data=one * 2)[1]
        self.assertIn("    c: reference to object 0#2, which is around it\n", printed)
        self.assertIn("shared objects: 0 (1 reference), 0#2 (1 reference), 1 (1 reference), 1#2 (1 reference)\n", printed)
        graph = run("--dot", data=one * 2)[1]
        for edge in ["o0 -> o1 ", "o0 -> o0 ", "o0_1 -> o1_1 ", "o0_1 -> o0_1 "]:
            self.assertIn(edge, graph)
        self.assertEqual(json.loads(run("-j", data=one * 2)[1])["objects"][1]["again"], 1)

        within = new_object(0, "AD409247FD654D5ABC6B90A224C55AEE", struct.pack("<II", 0, 2) + text("a") + new_object(
            0, "43D4FF6A038F4D67B1938D21B14DA8BC", struct.pack("<II", 0, 0)) + text("b") + struct.pack("<II", 1, 0))
        self.assertIn("b: reference to object 0#2\n", run(data=within)[1])

    def test_shared_objects_are_shortened_too(self):
        texts = b"".join(new_object(i, "43D4FF6A038F4D67B1938D21B14DA8BC", struct.pack("<II", 0, 0)) for i in range(18))
        many = texts + b"".join(struct.pack("<II", 1, i) for i in range(18))
        self.assertTrue(run(data=many)[1].endswith("15 (1 reference), and 2 more\n"))
        self.assertTrue(run("--full", data=many)[1].endswith("17 (1 reference)\n"))
        self.assertEqual(json.loads(run("--json", data=many)[1])["shared_omitted"], 2)

    def test_graph_and_summary(self):
        shared = os.path.join(GOLDEN, "shared_object")
        self.expect(["--dot", shared], SHARED_DOT)
        self.expect(["-s", shared], SHARED_SUMMARY)

    def test_json(self):
        printed = json.loads(run("--json", "--offsets", data=HOUSE + b"end")[1])
        self.assertEqual(printed["rest"], {"offset": len(HOUSE), "size": 3})
        floors, paint, sizes, photo, at = printed["entries"]
        self.assertEqual(floors, {"key": "floors", "type": "int", "tag": 3, "offset": 4, "value_offset": 18, "value": 2})
        self.assertEqual([each.get("value", each.get("hex")) for each in paint["entries"]], ["ochre \u00e9\n", "FF00"])
        self.assertEqual((len(sizes["values"]), sizes["omitted"]), (16, 2))
        self.assertEqual((photo["size"], len(photo["hex"]), photo["shortened"]), (40, 64, True))
        self.assertEqual(at["value"], [1, "NaN", "-Infinity"])

        whole = json.loads(run("--json", "--full", data=HOUSE)[1])["entries"]
        self.assertEqual((len(whole[2]["values"]), len(whole[3]["hex"])), (18, 80))
        self.assertEqual(len(json.loads(run("-j", "--count=9", data=HOUSE * 2)[1])["maps"]), 2)

        graph = json.loads(run("--json", "--class", NODE, os.path.join(GOLDEN, "graph"))[1])
        first, null, second = graph["objects"]
        self.assertEqual((null, second), (None, {"reference": 3}))
        self.assertEqual((first["number"], first["class_name"]), (0, "node"))
        self.assertEqual(first["fields"][2]["elements"][1:], [{"object": {"reference": 2}}, {"object": None}])
        self.assertEqual([each["references"] for each in graph["shared"]], [1, 2, 1, 1])

    def test_classes(self):
        stages = value_map(entry("n", 3, struct.pack("<i", 2)), entry("b", 31, struct.pack("<q", 0)))
        stages += struct.pack("<HhQ", 65535, -3, 2) + text("t")
        stages += struct.pack("<Id", 14, 0.5) + bytes(range(16)) + b"\x07\x08\x09\x0a" + struct.pack("<II", 0, 0)
        stages += struct.pack("<II", 1, 0) * 2 + value_map()
        fields = ("map m, u16 a, i16 b, u64 size, text t, value v, guid g, u8 c times 2, bytes d times size, "
                  "object o times m.n, object p times m.b, object q times 2, map last")
        with tempfile.NamedTemporaryFile("w", suffix=".classes") as file:
            file.write("# what notes store\n\n" + NOTE + fields + " # all of it\n")
            file.flush()
            status, printed, messages = run("--classes", file.name, data=note(stages))
        self.assertEqual((status, messages), (0, ""))
        for line in ["a: u16 65535", "b: i16 -3", "t: text \"t\"", "v: double 0.5", "d: bytes 090A",
                     "g: guid {00010203-0405-0607-0809-0A0B0C0D0E0F}", "c: u8, 2 times", "o: object, 2 times",
                     "p: object, 0 times", "[1] reference to object 0, which is around it", "last: map, 0 entries"]:
            self.assertIn(line + "\n", printed)

    def test_damage(self):
        for data, message in BROKEN:
            status, printed, messages = run("--as=map", data=data)
            self.assertEqual((status, messages), (1, f"velum-inspect: standard input: broken at {message}\n"))
        self.assertIn("  floors: int 2\n", run(data=HOUSE[:-1])[1])
        error = json.loads(run("--json", data=BROKEN[4][0])[1])["error"]
        self.assertEqual(error, {"kind": "damage", "offset": 17, "path": ["v", 0], "expected": "the tag of a type", "found": "30"})

        negative = value_map(entry("n", 3, struct.pack("<i", -2)))
        messages = run("--class", NOTE + "map m, u8 x times m.n", data=note(negative))[2]
        self.assertIn("at [0].x: expected a number \"m.n\" that isn't negative or beyond all streams, found -2", messages)
        deep = b"".join(value_map(entry("k", 40, b"")) for _ in range(99))
        self.assertIn("at (83 levels).k" + ".k" * 15 + ": expected 4 bytes", run(data=deep)[2])

        # What the elements before it were is known, though they aren't shown.
        many = value_map(entry("v", 46, struct.pack("<I", 50) + struct.pack("<Ii", 3, 7) * 20 + struct.pack("<I", 99)))
        self.assertTrue(run(data=many)[1].endswith("    ... 4 more\n"))
        self.assertEqual(json.loads(run("-j", data=many)[1])["entries"][0]["omitted"], 4)

        status, printed, messages = run(os.path.join(GOLDEN, "graph"))
        self.assertEqual(status, 1)
        error = json.loads(run("-j", os.path.join(GOLDEN, "graph"))[1])["error"]
        self.assertEqual((error["kind"], error["path"]), ("unknown class", [0]))
        self.assertIn('broken [shape=octagon, label="stopped at byte 8"]', run("-d", os.path.join(GOLDEN, "graph"))[1])
        self.assertIn("unknown class {9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3}", printed)
        self.assertIn("stopped at byte 8, at [0]: expected a class that is described", messages)


class CommandLine(unittest.TestCase):
    def test_refusals(self):
        for arguments, message in [
            (["--as", "tree"], '--as needs "map" or "objects", not "tree"'),
            (["--start", "-1"], '--start needs a number, not "-1"'),
            (["--json", "--dot"], "one of --json, --dot and --summary is enough"),
            (["a", "b"], "one file at a time"),
            (["/no/such/file"], "/no/such/file: No such file or directory"),
            (["--start=9"], "standard input: there are no more than 0 bytes to pass over"),
            (["--classes", "/no/such/file"], "/no/such/file: can't be read"),
            (["--class", "node: text name"], 'a class is "{IDENTIFIER} NAME: FIELD, FIELD": "node: text name"'),
            (["--class", NOTE + "word x"], 'a field begins with its type, as "u32 version": "word x"'),
            (["--class", NOTE + "text"], 'a field is "TYPE NAME", "TYPE NAME times COUNT"'),
            (["--class", NOTE + "text x until null"], 'a field is "TYPE NAME", "TYPE NAME times COUNT"'),
            (["--class", "{3F0C6A52-8D1E-4B97-A6C4-5E2B90D7F118} note u32 v"], 'a class is "{IDENTIFIER} NAME: FIELD'),
            (["--class", "{3F0C6A52-8D1E-4B97-A6C4-5E2B90D7F118}: u32 v"], 'a class is "{IDENTIFIER} NAME: FIELD'),
            (["--class", "{3F0C6A52-8D1E-4B97-A6C4-5E2B90D7F118} a\x1b[1m: u32 v"], r'a\x1B[1m: u32 v"'),
            (["--class", NOTE + "f32 n, u8 x times n"], 'no whole number of this name stands before field "x": "n"'),
            (["--class", NOTE + "u8 x times -1"], 'a count is a number, the name of one or of an entry of a map: "-1"'),
            (["--class", NOTE + "u8 x times 18446744073709551616"], "a count is a number, the name of one"),
            (["--class", NOTE + "bytes x"], 'bytes need a count, as "bytes NAME times 16": "bytes x"'),
            (["--class", NOTE + "text n, u8 x times n"], 'no whole number of this name stands before field "x": "n"'),
        ]:
            status, printed, messages = run(*arguments)
            self.assertEqual((status, printed), (2, ""), arguments)
            self.assertIn(message, messages)
        self.assertEqual(run("--unknown")[0], 2)

    def test_help_names_what_the_manual_names(self):
        status, printed, _ = run("--help")
        self.assertEqual(status, 0)
        with open(MANUAL, encoding="utf-8") as page:
            manual = page.read().replace("\\-", "-")
        options = [word.strip(",") for word in printed.split() if word.startswith("--")]
        self.assertGreater(len(options), 10)
        for option in options:
            self.assertIn(option, manual)
        self.assertRegex(run("--version")[1], r"^velum-inspect (\d+\.\d+\.\d+)\nvelum \1 \(ABI \d+\)\ncompiler: ")

    def test_the_manual_shows_what_is_printed(self):
        root = os.path.dirname(os.path.dirname(GOLDEN))
        path = os.path.dirname(PROGRAM) + os.pathsep + os.environ["PATH"]
        with open(os.path.join(root, "docs", "inspecting.md"), encoding="utf-8") as page:
            shown = re.findall(r"```sh\n(.*?)```\s+```text\n(.*?)```", page.read(), re.DOTALL)
        self.assertGreater(len(shown), 3)
        for command, output in shown:
            done = subprocess.run(command, shell=True, cwd=root, env={"PATH": path}, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT)
            self.assertEqual(done.stdout.decode(), output)

    def test_output_that_cannot_be_written_is_an_error(self):
        for arguments in [[], ["--json"], ["--help"], ["--version"]]:
            with open("/dev/full", "w") as full:
                done = subprocess.run([PROGRAM, *arguments], input=HOUSE, stdout=full, stderr=subprocess.PIPE)
            self.assertEqual(done.returncode, 2)
            self.assertIn(b"can't be written: No space left on device", done.stderr)

    @unittest.skipIf("SANITIZED" in os.environ, "sanitizers take more memory than there is")
    def test_memory_follows_what_is_shown(self):
        def limited():
            resource.setrlimit(resource.RLIMIT_AS, (48 << 20, 48 << 20))

        zeros = bytes(64 << 20)
        lengths = [struct.pack("<I", 1) + struct.pack("<I", len(zeros) + 1), value_map(entry("t", 1, b"\xff\xff\xff\xff")),
                   value_map(entry("b", 45, b"\xff" * 8)), value_map(entry("v", 46, b"\xff\xff\xff\xff"))]
        for begin in lengths:
            for arguments in [[], ["--json"], ["--summary"], ["--dot"]]:
                done = subprocess.run([PROGRAM, "--as=map", *arguments], input=begin + zeros, capture_output=True,
                                      preexec_fn=limited, timeout=120)
                self.assertEqual(done.returncode, 1, done.stderr)
                self.assertLess(len(done.stdout) + len(done.stderr), 4096)

    # Only on a terminal, only for what is large, and nothing of it stays.
    def test_progress(self):
        large = value_map(entry("b", 45, struct.pack("<Q", 70 << 20) + bytes(70 << 20)))
        for data, shows in [(large, True), (HOUSE, False)]:
            with tempfile.NamedTemporaryFile() as file:
                file.write(data)
                file.flush()
                terminal, its_end = pty.openpty()
                subprocess.run([PROGRAM, file.name], stdout=subprocess.DEVNULL, stderr=its_end, check=True)
                os.close(its_end)
                said = b""
                try:
                    while piece := os.read(terminal, 4096):
                        said += piece
                except OSError:  # its other end is closed
                    pass
                os.close(terminal)
            self.assertEqual(b"MiB read" in said, shows)
            self.assertEqual(said.endswith(b"\r\x1b[K"), shows)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
