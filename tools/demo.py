"""The script of `./dev demo`: crops, cleans and thins a scan, turns its colours to gray, leaves
pictures, and saves what is left."""
import time

import cowl

FILES = ("out.xyz", "out.ply", "out.cwl")


def step(text, result=None):
    """One line of what was done, with its figures and its time."""
    global begun
    now = time.monotonic()
    figures = "" if result is None else f": {result['before']} -> {result['after']} points"
    print(f"{text}{figures} ({(now - begun) * 1000:.0f} ms)")
    begun = time.monotonic()


begun = time.monotonic()
box = cowl.bounds()
low, high = list(box["min"]), list(box["max"])
for axis in (0, 1):                                  # a border of a tenth goes on each side
    border = (high[axis] - low[axis]) / 10
    low[axis] += border
    high[axis] -= border
step("cropped", cowl.crop(min=low, max=high))
step("deduplicated", cowl.deduplicate())
cowl.snapshot("color.png", size=(1000, 800))
step("pictured in color")
step("thinned", cowl.thin(100000))
cowl.to_gray()
step("colored gray")
cowl.snapshot("gray.png", size=(1000, 800))
cowl.snapshot("height.png", view="front", color="height", size=(1000, 300))
step("pictured in gray and by height")
for file in FILES:
    cowl.save(file)
    step(f"saved {file}")
facts = cowl.info()
print(f"{facts['points']} points in {facts['clouds']} cloud, {facts['colored']} of them colored")
