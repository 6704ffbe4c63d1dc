"""Keeps the middle of a scan: half of its extent in x and y, all heights.

    cowl -input scan.xyz -script 02-crop.py -output middle.xyz
"""
import cowl

box = cowl.bounds()
quarter = [(high - low) / 4 for low, high in zip(box["min"], box["max"])]
low, high = list(box["min"]), list(box["max"])
for axis in (0, 1):
    low[axis] += quarter[axis]
    high[axis] -= quarter[axis]
result = cowl.crop(min=low, max=high)
print(f"{result['after']} of {result['before']} points lie in the middle")
