"""Checks a scan and fails with a message when it is not as wanted. The setting "Check/Fewest Points"
of the settings document, or of another script, tells how many points it must have.

    cowl -input scan.xyz -script 10-check.py
"""
import sys

import cowl

cowl.settings.declare("Check/Fewest Points", 1000)
fewest = cowl.settings["Check/Fewest Points"]
try:
    reference = cowl.open("reference.xyz")["points"]
except cowl.Error as error:
    print("no reference:", error)
    reference = 0
facts = cowl.info()
own = facts["points"] - reference
if own < fewest:
    sys.exit(cowl.text("%1 points are too few, %2 are wanted", own, fewest))
print("good:", own, "points")
