"""Leaves pictures of a scan: from above in its colours, from the front by height, in gray.

    cowl -input scan.xyz -script 09-picture.py
"""
import cowl

cowl.snapshot("top.png")
cowl.snapshot("front.png", view="front", color="height", size=(640, 240))
cowl.to_gray()
cowl.snapshot("gray.png", size=(400, 400))
