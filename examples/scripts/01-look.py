"""Tells what is in the document.

    cowl -input scan.xyz -script 01-look.py
"""
import cowl

facts = cowl.info()
print(f"{facts['clouds']} cloud(s), {facts['points']} points, {facts['colored']} of them coloured")
for cloud in cowl.document:
    box = cowl.bounds(cloud=cloud)
    size = [high - low for low, high in zip(box["min"], box["max"])]
    print(f"{cloud.name}: {len(cloud)} points, {size[0]:.2f} x {size[1]:.2f} x {size[2]:.2f}")
