meta:
  id: velum_basics
  title: What values and objects of velum are made of
  ks-version: 0.11
  endian: le
doc-ref: ../format.md

types:
  text:
    doc: Any bytes, zeros too; most are UTF-8. Of a `ustring` readers drop what stands behind the first zero.
    seq:
      - id: length
        type: u4
      - id: bytes
        size: length

  guid:
    doc: The bytes stand as they are read in "{F39ECE85-3AF5-444C-857E-337C7401A53F}", from the left.
    seq:
      - id: bytes
        size: 16
