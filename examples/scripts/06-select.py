"""Selects points by a box and by a rule of one's own, then keeps what is selected.

    cowl -input scan.xyz -script 06-select.py -output selected.xyz
"""
import cowl
import numpy

box = cowl.bounds()
middle = [(low + high) / 2 for low, high in zip(box["min"], box["max"])]
print("left half:", cowl.select(max=(middle[0], box["max"][1], box["max"][2]))["selected"])

for cloud in cowl.document:
    flags = cloud.selection
    for block in cloud.blocks():
        part = slice(block.first, block.first + len(block))
        flags[part] &= block.points[:, 2] > middle[2]     # of these the upper ones
    cloud.selection = flags
print("of it the upper half:", sum(cloud.selected_count for cloud in cowl.document))
print("kept:", cowl.crop(selected=True)["after"])
