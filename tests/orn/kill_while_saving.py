#!/usr/bin/env python3
"""Kills `orn save` at random moments: the drawing must always be the old one or the new one, whole.

Usage: kill_while_saving.py ORN ROUNDS
"""
import pathlib
import random
import subprocess
import sys
import tempfile
import time


def drawing(colour, entities):
    """The groups of a drawing of that many lines in one colour."""
    groups = ["0", "SECTION", "2", "ENTITIES"]
    for number in range(entities):
        groups += ["0", "LINE", "8", "0", "62", str(colour), "10", str(number), "20", "0",
                   "11", str(number), "21", "1000"]
    groups += ["0", "ENDSEC", "0", "EOF"]
    return ("\n".join(groups) + "\n").encode()


def main():
    orn, rounds = sys.argv[1], int(sys.argv[2])
    old, new = drawing(1, 4000), drawing(2, 4000)
    generator = random.Random(7)
    with tempfile.TemporaryDirectory(prefix="orn-kill-") as name:
        folder = pathlib.Path(name)
        source, target = folder / "source.dxf", folder / "target.dxf"
        source.write_bytes(new)
        command = [orn, "save", str(source), str(target)]
        begin = time.monotonic()
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        longest = 1.2 * (time.monotonic() - begin)
        replaced = 0
        for _ in range(rounds):
            target.write_bytes(old)
            saving = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            time.sleep(generator.uniform(0, longest))
            saving.kill()
            saving.wait()
            found = target.read_bytes()
            if found not in (old, new):
                sys.exit(f"after a kill the drawing has {len(found)} bytes, neither old nor new")
            replaced += found == new
        # A kill between naming the new file and renaming it leaves that name.
        litter = [entry.name for entry in folder.iterdir() if entry not in (source, target)]
        if any(not entry.startswith(".headless-") for entry in litter) or len(litter) > 2:
            sys.exit(f"left behind: {litter}")
        print(f"{rounds} kills, {replaced} behind the end, {len(litter)} names left")


main()
