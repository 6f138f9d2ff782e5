#!/usr/bin/env python3
"""table.py <output of tools/bench>: the lines as the table of docs/performance.md."""
import re
import sys

LINE = re.compile(r"^(.{52})(?: /|  ) (.{51})\s+([\d.]+ \S+)\s+([\d.]+ \S+)\s+([\d.]+)\s+([\d.]+-[\d.]+)\s+([\d.]+)\s*(.*)$")
HEADING = re.compile(r"^(\S.*?)\s{2,}ours\s+beside")

print("| Work | Beside | Ours | Beside | Ratio | Middle half | Best | Goal |")
print("|---|---|---:|---:|---:|---:|---:|---:|")
for line in open(sys.argv[1], encoding="utf-8"):
    heading = HEADING.match(line)
    work = LINE.match(line.rstrip("\n"))
    if heading:
        print(f"| **{heading[1]}** | | | | | | | |")
    elif work:
        print("| " + " | ".join(cell.strip() for cell in work.groups()) + " |")
