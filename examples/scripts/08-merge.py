"""Opens all scans of the current folder and saves them as one, in the order of their places.

    cowl -script 08-merge.py
"""
import pathlib

import cowl

for path in sorted(pathlib.Path(".").glob("part-*.xyz")):
    print(path.name, cowl.open(path)["points"])
print("one cloud of", cowl.merge()["points"])
cowl.sort("xyz")
cowl.save("whole.xyz")
