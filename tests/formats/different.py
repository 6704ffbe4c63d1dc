"""What the readers of this folder raise when a file holds other values than it should."""


class Different(Exception):
    pass


def expect_equal(found, expected, what):
    if found != expected:
        raise Different(f"{what}: {found!r} in place of {expected!r}")
