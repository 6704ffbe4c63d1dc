"""Removes points that were measured twice, then what lies far below or above the rest.

    cowl -input scan.xyz -script 03-clean.py -output clean.xyz
"""
import cowl
import numpy

result = cowl.deduplicate()
print(f"{result['before'] - result['after']} duplicates removed")

heights = numpy.concatenate([block.points[:, 2].copy()
                             for cloud in cowl.document for block in cloud.blocks()])
low, high = numpy.quantile(heights, [0.001, 0.999])
far = 1e9
result = cowl.crop(min=(-far, -far, low), max=(far, far, high))
print(f"{result['before'] - result['after']} outliers removed")
