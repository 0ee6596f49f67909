#!/usr/bin/env python3
"""Downloads a tone and plays it: the generator's own commands, sent with PyVISA.

    visa_tone.py RESOURCE

RESOURCE is for instance TCPIP0::127.0.0.1::5025::SOCKET, or TCPIP0::127.0.0.1::inst0::INSTR for
what `krv sim --vxi11` serves. Needs PyVISA, and a VISA library or PyVISA-py.
"""
import math
import struct
import sys
import zlib

import pyvisa

POINTS = 2000
TURNS = 50


def tone():
    """I and Q in turn, as 16-bit codes."""
    codes = []
    for point in range(POINTS):
        angle = 2 * math.pi * TURNS * point / POINTS
        codes += [round(30000 * math.cos(angle)), round(30000 * math.sin(angle))]
    return codes


def download(generator, name, codes):
    """Returns whether the generator holds what was sent, by its checksum and by its codes."""
    generator.write_binary_values(f"ARB:DATA:INT {name},", codes, datatype="h", is_big_endian=True)
    sent = zlib.crc32(struct.pack(f"<{len(codes)}h", *codes))
    kept = generator.query(f"ARB:CHEC? {name}").split(",")[0]
    back = generator.query_binary_values(
        f"ARB:DATA? {name},1,0,{len(codes)}", datatype="h", is_big_endian=True)
    return kept == f"#H{sent:08X}" and back == codes


def main(resource):
    manager = pyvisa.ResourceManager()
    with manager.open_resource(resource, timeout=10000) as generator:
        generator.read_termination = generator.write_termination = "\n"
        print(generator.query("*IDN?").split(",")[1])
        print("kept as sent:", download(generator, "TONE", tone()))
        generator.write("FREQ 2.4 GHz;:POW -20 dBm;:ARB:CLOC 100 MHz;SEL TONE;STAT ON;:OUTP ON")
        print("playing:", generator.query("ARB:SEL?"), generator.query("ARB:STAT?"))
        generator.write("OUTP OFF;:ARB:STAT OFF")
        print("errors:", generator.query("SYST:ERR:COUN?"))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
