#!/usr/bin/env python3
"""comparepoints.py FILE FILE: whether two text point files hold the same points.

The same number of points, in the same order, each with equal numbers; how a number is written may
differ. Prints one line; the exit code is 0 when they are the same.
"""

import sys


def points(path):
    """The points of a file as (line number, values)."""
    with open(path, encoding="utf-8") as lines:
        for number, line in enumerate(lines, 1):
            values = line.split("#")[0].replace(",", " ").replace(";", " ").split()
            if values:
                yield number, [float(value) for value in values]


def compare(first_path, second_path):
    """What differs, or None, and the number of points that were equal."""
    first, second = points(first_path), points(second_path)
    count = 0
    while True:
        one, other = next(first, None), next(second, None)
        if one is None and other is None:
            return None, count
        if one is None or other is None:
            shorter = first_path if one is None else second_path
            return f"{shorter} ends after {count} points, the other goes on", count
        if one[1] != other[1]:
            return (f"{first_path}:{one[0]} has {one[1]}, "
                    f"{second_path}:{other[0]} has {other[1]}"), count
        count += 1


def main(arguments):
    if len(arguments) != 2:
        print("usage: comparepoints.py FILE FILE", file=sys.stderr)
        return 2
    try:
        difference, count = compare(*arguments)
    except (OSError, ValueError) as error:
        print(f"   {error}")
        return 1
    if difference or not count:
        print(f"   The points differ: {difference or 'both files are empty'}.")
        return 1
    print(f"   {arguments[1]} holds the same {count} points as {arguments[0]}, value for value.")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
