#!/usr/bin/env python3
"""Point files between cowl and other programs, both ways.

    check_interchange.py COWL

COWL is the staged executable. The library meshio, of the package python3-meshio, reads the PLY files
that cowl writes and writes such as cowl reads. The tools of PCL and CloudCompare do the same where
they are installed; where they are not, that is said.

Prints OK for each way that agrees, or FAIL with the first difference, where it ends with 1.
"""

import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile

POINTS = 5000
# What a program that keeps coordinates as floats may change in coordinates below 1,000,000.
FLOAT_STEP = 0.0626


class Different(Exception):
    pass


class Points:
    """Coordinates and colours, as lists of tuples."""

    def __init__(self, coordinates, colours):
        self.coordinates = [tuple(float(c) for c in point) for point in coordinates]
        self.colours = [tuple(int(c) for c in colour) for colour in colours]

    @staticmethod
    def sample():
        numbers = random.Random(7)
        coordinates = [(637000 + round(numbers.uniform(0, 999), 2), 849000 + i / 8,
                        round(numbers.uniform(-9, 9), 6)) for i in range(POINTS)]
        return Points(coordinates, [[numbers.randrange(256) for _ in range(3)]
                                    for _ in coordinates])

    @staticmethod
    def of_text(path):
        rows = [line.split() for line in path.read_text().splitlines()]
        return Points([row[:3] for row in rows], [row[3:6] for row in rows])

    def write_text(self, path):
        path.write_text("".join(" ".join(map(repr, point + colour)) + "\n" for point, colour in
                                zip(self.coordinates, self.colours)))

    def expect(self, expected, tolerance=0.0):
        if len(self.coordinates) != len(expected.coordinates):
            raise Different(f"{len(self.coordinates)} points, not {len(expected.coordinates)}")
        if self.colours != expected.colours:
            raise Different("other colours")
        for i, (found, wanted) in enumerate(zip(self.coordinates, expected.coordinates)):
            if any(abs(a - b) > tolerance for a, b in zip(found, wanted)):
                raise Different(f"point {i} is {found}, not {wanted}")


def run(*command):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    return subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=300, env=environment).stdout


class Interchange:
    def __init__(self, cowl, folder):
        self.cowl = cowl
        self.folder = folder
        self.points = Points.sample()
        self.text = folder / "points.xyz"
        self.points.write_text(self.text)

    def convert(self, source, name):
        target = self.folder / name
        records = run(self.cowl, "-input", source, "-output", target, "-logfile", "stdout")
        if not target.exists() or "<Error=" in records:
            raise Different(f"cowl wrote no {name}: {records}")
        return target

    def read_by_cowl(self, path):
        return Points.of_text(self.convert(path, path.name + ".xyz"))

    def with_meshio(self):
        import meshio  # the module of a package that is needed for this test
        import numpy

        mesh = meshio.read(self.convert(self.text, "ours.ply"))
        # It takes the type uchar for a signed one.
        colours = [mesh.point_data[name].astype(numpy.uint8) for name in ("red", "green", "blue")]
        Points(mesh.points, zip(*colours)).expect(self.points)
        print("OK   meshio reads the PLY file of cowl")
        data = {name: numpy.array(channel, dtype=numpy.uint8) for name, channel in
                zip(("red", "green", "blue"), zip(*self.points.colours))}
        theirs = meshio.Mesh(numpy.array(self.points.coordinates), [], point_data=data)
        for binary in (True, False):
            path = self.folder / f"theirs{int(binary)}.ply"
            meshio.write(path, theirs, binary=binary)
            self.read_by_cowl(path).expect(self.points)
        print("OK   cowl reads the PLY files of meshio")

    def with_pcl(self):
        ours = self.convert(self.text, "ours.pcd")
        for form, name in ((0, "ascii"), (1, "binary")):
            path = self.folder / f"pcl{form}.pcd"
            run("pcl_convert_pcd_ascii_binary", ours, path, form)
            self.read_by_cowl(path).expect(self.points, 0 if form else FLOAT_STEP)
            print(f"OK   PCL reads the PCD file of cowl, and cowl its {name} one")
        packed = self.folder / "pcl2.pcd"
        run("pcl_convert_pcd_ascii_binary", ours, packed, 2)
        try:
            self.read_by_cowl(packed)
        except Different as refused:
            if "binary_compressed" not in str(refused):
                raise
        else:
            raise Different("a compressed file was read")
        print("OK   cowl refuses the compressed PCD file of PCL by name")
        path = self.folder / "pcl.pcd"
        run("pcl_ply2pcd", self.convert(self.text, "forpcl.ply"), path)
        self.read_by_cowl(path).expect(self.points)
        print("OK   PCL reads the PLY file of cowl")

    def with_cloudcompare(self):
        for extension in ("ply", "pts"):
            ours = self.convert(self.text, "forcc." + extension)
            path = self.folder / f"cc-{extension}.ply"
            said = run("CloudCompare", "-SILENT", "-AUTO_SAVE", "OFF", "-O", ours, "-C_EXPORT_FMT",
                       "PLY", "-SAVE_CLOUDS", "FILE", path)
            if not path.exists():
                raise Different(f"CloudCompare wrote nothing: {said}")
            self.read_by_cowl(path).expect(self.points, FLOAT_STEP)
            print(f"OK   CloudCompare reads the {extension} file of cowl, and cowl its PLY file")


def main(cowl):
    with tempfile.TemporaryDirectory() as folder:
        interchange = Interchange(pathlib.Path(cowl).resolve(), pathlib.Path(folder))
        interchange.with_meshio()
        for program, check in (("pcl_convert_pcd_ascii_binary", interchange.with_pcl),
                               ("CloudCompare", interchange.with_cloudcompare)):
            if shutil.which(program):
                check()
            else:
                print(f"     {program} is not installed and passed over")


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except Different as error:
        sys.exit(f"FAIL {error}")
