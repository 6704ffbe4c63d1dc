"""Three ways to fewer points, and what each leaves.

    cowl -input scan.xyz -script 04-thin.py -output thin.xyz
"""
import cowl

# One point for each cube of a metre: dense places lose most.
print("one for each cube:", cowl.voxel_thin(1.0)["after"])
# So many at random; the same seed chooses the same points.
print("at random:", cowl.thin(5000, method="random", seed=7)["after"])
# So many at equal steps in the order of the points.
print("evenly:", cowl.thin(1000)["after"])
