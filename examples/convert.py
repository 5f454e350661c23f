#!/usr/bin/env python3
"""convert.py LIBRARY FILE OUT: the library from Python."""
import ctypes
import os
import sys

library = ctypes.CDLL(sys.argv[1])
library.Convert.restype = ctypes.c_char_p
file, out = map(os.fsencode, sys.argv[2:4])
if not library.Check(0, file):
    sys.exit("not for this scanner")
sys.exit(library.Convert(0, file, out, 0))
