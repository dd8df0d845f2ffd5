meta:
  id: velum_objects
  title: Objects of velum in a row
  ks-version: 0.11
  endian: le
  imports:
    - velum_object
doc: What one writer wrote, to the end of the stream. The numbers go on from one object to the next.
doc-ref: ../format.md#objects
seq:
  - id: objects
    type: velum_object
    repeat: eos
