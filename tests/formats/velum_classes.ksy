meta:
  id: velum_classes
  title: What the class of the tests stores
  ks-version: 0.11
  endian: le
  imports:
    - velum_basics
    - velum_object
    - velum_values
doc: Stands in the place of docs/formats/velum_classes.ksy, as that says; tests/support/node.hpp has the class.
params:
  - id: class_id
    type: bytes
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
      - id: links
        type: velum_object
        repeat: until
        repeat-until: _.kind == velum_object::kind::nothing

  unknown:
    seq:
      - id: no_bytes
        size: 0
        valid:
          expr: 'false'
