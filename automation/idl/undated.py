"""Takes the time of the compilation out of a type library, so that the same source gives the same bytes.

widl notes it twice, as a text and as the number of seconds behind that text. Usage: undated.py library
"""
import pathlib
import re
import sys

path = pathlib.Path(sys.argv[1])
library = path.read_bytes()
undated, places = re.subn(
    rb"( at )\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\n(W*\x13\0).{4}",
    rb"\1Thu Jan  1 00:00:00 1970\n\2" + bytes(4),
    library,
    flags=re.DOTALL,
)
if places != 1 or len(undated) != len(library):
    sys.exit(f"{path}: the time is not where widl writes it")
path.write_bytes(undated)
