"""Colours the points by their height, block by block, and shows how far it is.

    cowl -input scan.xyz -script 07-paint.py -output painted.xyz -logfile stdout
"""
import cowl
import numpy

box = cowl.bounds()
low, range_ = box["min"][2], (box["max"][2] - box["min"][2]) or 1.0
with cowl.progress("Painting") as step:
    for cloud in cowl.document:
        if cloud.colors is None:
            cloud.colors = numpy.zeros((len(cloud), 3), numpy.uint8)
        for block in cloud.blocks():
            share = (block.points[:, 2] - low) / range_
            block.colors[:, 0] = 255 * share              # red where it is high
            block.colors[:, 1] = 64
            block.colors[:, 2] = 255 * (1 - share)        # blue where it is low
            step.update((block.first + len(block)) / len(cloud))
print("painted", sum(len(cloud) for cloud in cowl.document), "points")
