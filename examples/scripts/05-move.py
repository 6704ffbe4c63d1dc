"""Brings a scan to the origin, turns it, and gives it another unit.

    cowl -input scan.xyz -script 05-move.py -output moved.xyz
"""
import cowl

low = cowl.bounds()["min"]
cowl.translate([-value for value in low])
cowl.rotate(90)                      # degrees, about the z axis
cowl.scale(0.001)                    # metres to kilometres
cowl.transform([1, 0, 0, 0,          # y and z change places
                0, 0, 1, 0,
                0, 1, 0, 0])
print("now at", cowl.bounds()["min"])
