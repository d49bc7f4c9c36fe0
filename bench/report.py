"""Prints the ratios that `compare` measured as a table, and writes it and plots into a directory.

Usage: report.py FIGURES DIRECTORY
"""
import csv
import pathlib
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams["svg.hashsalt"] = "bench"  # the same file for the same figures
matplotlib.rcParams["svg.fonttype"] = "none"
import matplotlib.pyplot as pyplot

ENGINES = ["server", "embedded"]
NAMES = ["ours", "SOCI", "Poco"]
BARE = ", no index"
PLOTS = {"list": "rows of the list", "key": "threads that ask for one row by its key",
         "store": "threads that insert one row each time", "batch": "rows of one insert"}


def number(text):
    return f"{float(text):.2f}" if float(text) < 10 else f"{float(text):.1f}"


def cell(row):
    if row is None:
        return ""
    text = f"{number(row['median'])} ({number(row['low'])}–{number(row['high'])})"
    return text + (f", {number(row['cpu'])}" if float(row["cpu"]) > 0 else "")


def table(rows):
    found = {}
    for row in rows:
        name, bare, _ = row["contestant"].partition(BARE)
        title = row["title"] + (", without its index" if bare else "")
        found[title, row["engine"], name] = row
    columns = [(engine, name) for engine in ENGINES for name in NAMES
               if any(key[1:] == (engine, name) for key in found)]
    yield "| work | " + " | ".join(f"{engine}: {name}" for engine, name in columns) + " |"
    yield "| --- |" + " --- |" * len(columns)
    for title in dict.fromkeys(key[0] for key in found):
        cells = [cell(found.get((title, *column))) for column in columns]
        yield f"| {title} | " + " | ".join(cells) + " |"


def plot(rows, family, label, file):
    figure, axes = pyplot.subplots(1, len(ENGINES), figsize=(10, 4))
    for engine, axis in zip(ENGINES, axes):
        axis.set(title=engine, xscale="log", yscale="log", xlabel=label)
        axis.axhline(1, color="gray", linewidth=1)
        for name in NAMES:
            points = [row for row in rows
                      if (row["engine"], row["family"], row["contestant"]) == (engine, family, name)]
            sizes = [int(row["size"]) for row in points]
            median = [float(row["median"]) for row in points]
            spread = [[float(row["median"]) - float(row["low"]) for row in points],
                      [float(row["high"]) - float(row["median"]) for row in points]]
            if points:
                axis.errorbar(sizes, median, spread, label=name, marker="o", capsize=3)
                axis.set_xticks(sizes, [f"{size:,}" for size in sizes])
        axis.minorticks_off()
        axis.set_yticks(ticks := [0.05, 0.1, 0.25, 0.5, 0.75, 1, 1.5, 2, 3, 5, 10], [str(tick) for tick in ticks])
    axes[0].set_ylabel("time over the raw interface's")
    axes[-1].legend()
    figure.tight_layout()
    figure.savefig(file, metadata={"Date": None})


def main(figures, directory):
    with open(figures, encoding="utf-8") as file:
        rows = list(csv.DictReader(file, delimiter=";"))
    directory = pathlib.Path(directory)
    directory.mkdir(parents=True, exist_ok=True)
    text = "\n".join(table(rows)) + "\n"
    (directory / "table.md").write_text(text, encoding="utf-8")
    print(text)
    for family, label in PLOTS.items():
        if len({row["size"] for row in rows if row["family"] == family}) > 1:
            plot(rows, family, label, directory / f"{family}.svg")
    print(f"Written to {directory}")


main(*sys.argv[1:])
