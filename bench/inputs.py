"""Inputs for the benchmarks: the same octets on every run.

    inputs.certificates(size)     real certificates in one SEQUENCE
    inputs.FAMILIES[name](size)   one kind of encoding, of about that many octets
"""

import base64
import re

BUNDLE = "/etc/ssl/certs/ca-certificates.crt"


def length_octets(length):
    if length < 0x80:
        return bytes([length])
    octets = length.to_bytes((length.bit_length() + 7) // 8, "big")
    return bytes([0x80 | len(octets)]) + octets


def triple(identifier, contents):
    return bytes([identifier]) + length_octets(len(contents)) + contents


def certificates(size):
    """Certificates of the distribution, over and over, in one SEQUENCE."""
    with open(BUNDLE, encoding="ascii") as bundle:
        blocks = re.findall(r"BEGIN CERTIFICATE-----(.*?)-----END", bundle.read(), re.S)
    once = b"".join(base64.b64decode(block) for block in blocks)
    return triple(0x30, once * (size // len(once) + 1))


def repeated(piece):
    return lambda size: piece * (size // len(piece))


def definite_nesting(size):
    headers = []
    inner = 0
    while inner < size:
        header = b"\x30" + length_octets(inner)
        headers.append(header)
        inner += len(header)
    return b"".join(reversed(headers))


def closed_nesting(size):
    return b"\x30\x80" * (size // 4) + b"\0\0" * (size // 4)


def unclosed_nesting(size):
    return b"\x30\x80" * (size // 2)


def one_end_missing(size):
    return b"\x30\x80" * (size // 4) + b"\0\0" * (size // 4 - 1)


def siblings_in_siblings(size):
    """Indefinite triples, each with ten inside it, three levels of them."""
    piece = b"\x05\x00"
    for _ in range(3):
        piece = b"\x30\x80" + piece * 10 + b"\0\0"
    return piece * (size // len(piece))


def nested_segments(size):
    """Constructed strings in constructed strings, with segments at every level."""
    levels = size // 8
    return b"\x24\x80\x04\x02AB" * levels + b"\0\0" * levels


def damaged_lengths(size):
    """Records whose length octet 81 was written as 00, among sound ones."""
    record = triple(0x30, b"\x02\x01\x05" + triple(0x04, b"\xff" * 200))
    damaged = record.replace(b"\x04\x81", b"\x04\x00")
    group = damaged + record * 999
    return (group * (size // len(group) + 1))[:size]


FAMILIES = {
    "flat records": repeated(triple(0x30, b"\x02\x01\x05\x0c\x05hello")),
    "definite nesting": definite_nesting,
    "closed indefinite nesting": closed_nesting,
    "unclosed indefinite nesting": unclosed_nesting,
    "nesting with one end missing": one_end_missing,
    "siblings inside siblings": siblings_in_siblings,
    "nested segments": nested_segments,
    "valid and invalid contents": repeated(b"\x30\x06\x01\x01\xff\x17\x01X"),
    "padding runs": repeated(b"\x05\x00" + b"\xff" * 62),
    "zeros": repeated(b"\0\0"),
    "damaged lengths, repaired": damaged_lengths,
}
