meta:
  id: velum_object
  title: Object of velum with all that it leads to
  ks-version: 0.11
  endian: le
  imports:
    - velum_basics
    - velum_values
    - velum_classes
doc: |
  An object stands where a writer first came to it. Wherever else the graph leads to it, also from within it, there is a
  reference to its number.

  What an object stores has neither a length nor types: only its class knows. The classes of velum are described here, all
  others in velum_classes.ksy, which you replace by a description of yours.
doc-ref: ../format.md#objects
seq:
  - id: kind
    type: u4
    enum: kind
    valid:
      in-enum: true
    doc: velum writes no other kinds, but reads them as those of new objects.
  - id: content
    type:
      switch-on: kind
      cases:
        'kind::reference': reference
        'kind::new': new_object

types:
  reference:
    seq:
      - id: number
        type: u4
        doc: That of an object which began before; it may not have ended yet.

  new_object:
    seq:
      - id: number
        type: u4
        doc: How many objects the writer had begun before it.
      - id: class_id
        type: velum_basics::guid
      - id: stages
        doc: The construction stage and the state stage, one behind the other.
        type:
          switch-on: class_id.bytes
          cases:
            '[0x43, 0xd4, 0xff, 0x6a, 0x03, 0x8f, 0x4d, 0x67, 0xb1, 0x93, 0x8d, 0x21, 0xb1, 0x4d, 0xa8, 0xbc]': boxed_string
            '[0xad, 0x40, 0x92, 0x47, 0xfd, 0x65, 0x4d, 0x5a, 0xbc, 0x6b, 0x90, 0xa2, 0x24, 0xc5, 0x5a, 0xee]': boxed_object_map
            '[0x2d, 0x4a, 0xf8, 0xb5, 0xdd, 0x75, 0x43, 0xfc, 0xa0, 0x53, 0x41, 0x1a, 0x31, 0x6f, 0x2c, 0x99]': boxed_value_map
            _: velum_classes(class_id.bytes)

  boxed_string:
    doc: '`basic_string_t`'
    seq:
      - id: version
        type: version
      - id: text
        type: velum_basics::text

  boxed_object_map:
    doc: '`basic_unknown_map_t`: objects, or null, under names'
    seq:
      - id: version
        type: version
      - id: num_entries
        type: u4
      - id: entries
        type: object_entry
        repeat: expr
        repeat-expr: num_entries

  object_entry:
    seq:
      - id: key
        type: velum_basics::text
      - id: object
        type: velum_object

  boxed_value_map:
    doc: '`uany_map_obj_t`'
    seq:
      - id: version
        type: version
      - id: map
        type: velum_values

  version:
    doc: Readers pass over it.
    seq:
      - id: word
        type: u4
        doc: 0x00010000 where a writer of velum wrote it.

enums:
  kind:
    0: {id: nothing, doc: nothing follows}
    1: reference
    2: {id: new, doc: an object that wasn't met before}
