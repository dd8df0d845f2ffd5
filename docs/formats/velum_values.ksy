meta:
  id: velum_values
  title: Value map of velum
  ks-version: 0.11
  endian: le
  imports:
    - velum_basics
    - velum_object
doc: |
  Named values of many types, in maps within maps. Nothing stands in front of a map and nothing behind it: what follows in
  a stream is the business of whoever wrote it. Only a map that was written through a serializer has objects in it
  (tag 47).

  The entries stand in the order of the map, which means something for an `any_map` alone: there it is alphabetical by
  bytes. A key that stands twice has the value that stands later.

  velum reads a map that ends early as if zeros followed; this description refuses it.
doc-ref: ../format.md#values
seq:
  - id: num_entries
    type: u4
  - id: entries
    type: entry
    repeat: expr
    repeat-expr: num_entries

types:
  entry:
    seq:
      - id: key
        type: velum_basics::text
      - id: value
        type: value

  value:
    seq:
      - id: tag
        type: u4
        enum: tag
        valid:
          in-enum: true
      - id: content
        type:
          switch-on: tag
          cases:
            'tag::std_string': velum_basics::text
            'tag::truth': truth
            'tag::int': ints(1)
            'tag::float': floats(1)
            'tag::mat_float_2x1': rows_of_floats(2, 1)
            'tag::mat_float_3x1': rows_of_floats(3, 1)
            'tag::mat_float_4x1': rows_of_floats(4, 1)
            'tag::mat_float_3x3': rows_of_floats(3, 3)
            'tag::mat_float_3x4': rows_of_floats(3, 4)
            'tag::mat_float_4x4': rows_of_floats(4, 4)
            'tag::mat_int_2x1': ints(2)
            'tag::mat_int_3x1': ints(3)
            'tag::mat_int_4x1': ints(4)
            'tag::double': doubles(1)
            'tag::mat_double_2x1': rows_of_doubles(2, 1)
            'tag::mat_double_3x1': rows_of_doubles(3, 1)
            'tag::mat_double_4x1': rows_of_doubles(4, 1)
            'tag::mat_double_3x3': rows_of_doubles(3, 3)
            'tag::mat_double_3x4': rows_of_doubles(3, 4)
            'tag::mat_double_4x4': rows_of_doubles(4, 4)
            'tag::vec_int_2': ints(2)
            'tag::vec_int_3': ints(3)
            'tag::vec_int_4': ints(4)
            'tag::vec_float_2': floats(2)
            'tag::vec_float_3': floats(3)
            'tag::vec_float_4': floats(4)
            'tag::quat_float': floats(4)
            'tag::linear_space3': rows_of_floats(3, 3)
            'tag::affine_space3': affine_space3
            'tag::long_long': long_long
            'tag::guid': velum_basics::guid
            'tag::any_map': velum_values
            'tag::any_maps': maps
            'tag::ustring': velum_basics::text
            'tag::uany_map': velum_values
            'tag::uany_maps': maps
            'tag::byte_vector': byte_vector
            'tag::values': values
            'tag::object': velum_object

  truth:
    seq:
      - id: word
        type: u4
        doc: 1 where a writer of velum wrote true.
    instances:
      is_true:
        value: word != 0

  ints:
    doc: One number, or the components of a vector or of a matrix with one column.
    params:
      - id: count
        type: s4
    seq:
      - id: elements
        type: s4
        repeat: expr
        repeat-expr: count

  floats:
    params:
      - id: count
        type: s4
    seq:
      - id: elements
        type: f4
        repeat: expr
        repeat-expr: count

  doubles:
    params:
      - id: count
        type: s4
    seq:
      - id: elements
        type: f8
        repeat: expr
        repeat-expr: count

  long_long:
    seq:
      - id: number
        type: s8
        doc: In JavaScript a number, which is rounded above 2^53.

  rows_of_floats:
    doc: A matrix; or the vectors of a linear space.
    params:
      - id: num_rows
        type: s4
      - id: num_columns
        type: s4
    seq:
      - id: rows
        type: floats(num_columns)
        repeat: expr
        repeat-expr: num_rows

  rows_of_doubles:
    params:
      - id: num_rows
        type: s4
      - id: num_columns
        type: s4
    seq:
      - id: rows
        type: doubles(num_columns)
        repeat: expr
        repeat-expr: num_rows

  affine_space3:
    seq:
      - id: linear
        type: rows_of_floats(3, 3)
      - id: origin
        type: floats(3)

  byte_vector:
    seq:
      - id: length
        type: u8
      - id: bytes
        size: length

  maps:
    seq:
      - id: num_maps
        type: u4
      - id: maps
        type: velum_values
        repeat: expr
        repeat-expr: num_maps

  values:
    seq:
      - id: num_values
        type: u4
      - id: values
        type: value
        repeat: expr
        repeat-expr: num_values

enums:
  tag:
    1: {id: std_string, doc: '`std::string`'}
    2: {id: truth, doc: '`bool`'}
    3: {id: int, doc: '`int`, 32 bits'}
    4: {id: float, doc: '`float`'}
    5: {id: mat_float_2x1, doc: '`tessa::mat<float,2,1>`: 2 rows, 1 column; the other matrices likewise'}
    6: mat_float_3x1
    7: mat_float_4x1
    8: mat_float_3x3
    9: mat_float_3x4
    10: mat_float_4x4
    11: mat_int_2x1
    12: mat_int_3x1
    13: mat_int_4x1
    14: {id: double, doc: '`double`'}
    15: mat_double_2x1
    16: mat_double_3x1
    17: mat_double_4x1
    18: mat_double_3x3
    19: mat_double_3x4
    20: mat_double_4x4
    21: {id: vec_int_2, doc: '`math::vec<int,2,math::use_simd_tag>`; the other vectors likewise'}
    22: vec_int_3
    23: vec_int_4
    24: vec_float_2
    25: vec_float_3
    26: vec_float_4
    27: {id: quat_float, doc: '`math::quat<float>`, in the order in which the components were given'}
    28: linear_space3
    29: affine_space3
    31: {id: long_long, doc: '`long long`, 64 bits'}
    32: guid
    40: {id: any_map, doc: 'the keys were `std::string`'}
    41: {id: any_maps, doc: '`std::vector<any_map>`'}
    42: {id: ustring, doc: an interned text}
    43: {id: uany_map, doc: 'the keys were interned; stored as an `any_map` is'}
    44: {id: uany_maps, doc: '`std::vector<uany_map>`'}
    45: byte_vector
    46: {id: values, doc: '`std::vector<boost::any>`'}
    47: {id: object, doc: 'an object of the graph around the map, or null'}
