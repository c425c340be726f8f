"""The frameworks that the program loads, as frameworks.txt lists them: each with the letter of its version."""

import pathlib


def install_names():
    """By the framework, where the system has it: programs look there and nowhere else."""
    lines = (pathlib.Path(__file__).parent / "frameworks.txt").read_text().splitlines()
    return {name: f"/System/Library/Frameworks/{name}.framework/Versions/{version}/{name}"
            for name, version in (line.split() for line in lines)}
