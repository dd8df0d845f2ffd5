meta:
  id: velum_classes
  title: What the classes of a program store
  ks-version: 0.11
  endian: le
  imports:
    - velum_basics
    - velum_object
    - velum_values
doc: |
  The place for your own classes: put a file of the same name in its stead. This one knows none, and refuses the first
  object of a class that isn't velum's.

  Yours has the same `meta`, `params` and type `unknown`, and one case for each class: its identifier, byte by byte as it is written, and a type with
  what `serialize_obj` and then `serialize` write. A class {9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3} that writes a text, an
  object and a map:

      seq:
        - id: stages
          type:
            switch-on: class_id
            cases:
              '[0x9c, 0x2e, 0x3f, 0x61, 0x7a, 0x54, 0x4b, 0x0d, 0x8e, 0x11, 0x52, 0xb7, 0xa0, 0xc4, 0xd6, 0xf3]': node
              _: unknown
      types:
        node:
          seq:
            - id: name
              type: velum_basics::text
            - id: origin
              type: velum_object
            - id: values
              type: velum_values

  `write_string` writes a `velum_basics::text`, `write_object` a `velum_object`, `velum::write` a `velum_values`, and
  `write` plain bytes. Objects up to a null are a `velum_object` with `repeat: until` and
  `repeat-until: _.kind == velum_object::kind::nothing`.
doc-ref: ../format.md#objects
params:
  - id: class_id
    type: bytes
seq:
  - id: stages
    type: unknown

types:
  unknown:
    doc: Of what isn't known not even the length is.
    seq:
      - id: no_bytes
        size: 0
        valid:
          expr: 'false'
