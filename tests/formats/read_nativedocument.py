"""Reads native documents, from docs/formats/native-document.md.

What a file is to hold is a list of clouds, each an object, with numbers as text:

    {"name": text, "decimals": n, "scale": number, "grid": [six numbers] or null,
     "points": [numbers], "colours": [bytes] or null, "selected": [points from 1]}
"""

import read_bitvector
import read_pointarray
import read_pointcolors
from different import Different, expect_equal
from read_modelfile import OBJECT, Damaged, ModelFile
from read_typedbinary import Damaged as DamagedValue
from read_typedbinary import expect_number

PAGE = "native-document.md"

WIDE_TEXT = 0x10005
DOCUMENT, FORM, SCALE, GRID, COLOURS, POINTS, SELECTION = range(0x435701, 0x435708)
CLOUD = "{9B0E0F52-2C1D-4A77-8E31-64D05A7C1B90}"


class Cloud:
    """Reads the elements of one object."""

    def __init__(self, file):
        self.file = file
        self.fields = {}
        while file.left() > 0:
            tag, version = file.enter()
            if tag in self.READERS:
                expect_equal(version, 0 if tag == WIDE_TEXT else 1, "version of an element")
                self.READERS[tag](self)
            file.leave()

    def name(self):
        self.fields["name"] = self.file.wide_text()

    def form(self):
        self.fields["decimals"] = self.file.values.integer(4, signed=True)

    def scale(self):
        self.fields["scale"] = self.file.values.double()

    def grid(self):
        self.fields["grid"] = [self.file.values.double() for _ in range(6)]

    def chunk(self, reader, read):
        """A chunk that another page tells of, up to the end of its element."""
        values, end = self.file.values, self.file.ends[-1]
        try:
            *found, values.at = read(values.data[:end], values.at)
        except reader.Damaged as error:
            raise Damaged(str(error)) from error
        expect_equal(values.at, end, "end of a chunk")
        return found

    def colours(self):
        flags, colours = self.chunk(read_pointcolors, read_pointcolors.read_colors)
        expect_equal(flags, 3, "flags of the colours")
        self.fields["colours"] = [round(255 * channel) for c in colours[1:] for channel in c]

    def points(self):
        (points,) = self.chunk(read_pointarray, read_pointarray.read_array)
        self.fields["points"] = [number for point in points for number in point]

    def selection(self):
        (found,) = self.chunk(read_bitvector, read_bitvector.read_vector)
        self.fields["selected"] = found["bits"]

    READERS = {WIDE_TEXT: name, FORM: form, SCALE: scale, GRID: grid, COLOURS: colours,
               POINTS: points, SELECTION: selection}

    def expect_numbers(self, key, expected):
        found = self.fields.get(key)
        if found is None or expected is None:
            return expect_equal(found, expected, key)
        expect_equal(len(found), len(expected), key)
        for number, text in zip(found, expected):
            expect_number(number, text, key)

    def check(self, expected):
        for key, absent in [("name", None), ("decimals", None), ("colours", None),
                            ("selected", [])]:
            expect_equal(self.fields.get(key, absent), expected[key], key)
        expect_number(self.fields["scale"], expected["scale"], "scale")
        self.expect_numbers("grid", expected["grid"])
        self.expect_numbers("points", expected["points"])


def read_document(file):
    tag, version = file.enter()
    expect_equal((tag, version), (DOCUMENT, 1), "first element")
    count = file.values.integer(4, signed=False)
    file.leave()
    clouds = []
    while file.left() > 0:
        tag, version = file.enter()
        if tag == OBJECT and file.id() == CLOUD:
            expect_equal(version, 1, "version of a cloud")
            clouds.append(Cloud(file))
        file.leave()
    expect_equal(len(clouds), count, "number of clouds")
    return clouds


def check(data, expected):
    try:
        file = ModelFile(data)
        clouds = read_document(file)
        expect_equal(len(clouds), len(expected), "number of clouds")
        for cloud, fields in zip(clouds, expected):
            cloud.check(fields)
    except (DamagedValue, KeyError) as error:
        raise Damaged(str(error)) from error
    except IndexError as error:
        raise Different("an element ends where none is open") from error
