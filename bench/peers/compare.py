#!/usr/bin/env python3
"""compare.py <output of bench> <command that runs a script>...: the translation of 45,000 characters to values beside
other ways to do it, as far as they are installed: Python's re.sub, Jinja's compiled template, VBScript with
Scripting.Dictionary. All of them must have the same result."""
import os
import re
import subprocess
import sys
import time

NAMES, UNITS, ROUNDS = 2000, 45000, 15
values = {f"FField{1000 + i}": f"value {i}" for i in range(NAMES)}
text = "".join(f"[FField{1000 + i}]" + "文" * (i % 10 + 4) for i in range(NAMES))
text += "。" * (UNITS - len(text))
expected = "".join(f"value {i}" + "文" * (i % 10 + 4) for i in range(NAMES)) + "。" * text.count("。")


def milliseconds(call):
    if call() != expected:
        sys.exit(f"compare.py: {call.__name__} has another result")
    times = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        call()
        times.append(time.perf_counter() - start)
    return sorted(times)[ROUNDS // 2] * 1000


def our_milliseconds(output):
    found = re.search(r"^45,000 characters to values .*?([\d.]+) (us|ms|s)\s", output, re.MULTILINE)
    if not found:
        sys.exit("compare.py: the line of the translation is missing")
    return float(found[1]) * {"us": 0.001, "ms": 1, "s": 1000}[found[2]]


def python_re():
    return re.sub(r"\[([^\]]*)\]", lambda match: values.get(match[1], match[0]), text)


def jinja():
    try:
        import jinja2
    except ImportError:
        return None
    template = jinja2.Environment().from_string(re.sub(r"\[(\w+)\]", r"{{\1}}", text))

    def rendered():
        return template.render(values)

    return milliseconds(rendered)


def vbscript(command):
    # Relative: cscript takes a path that begins with "/" for an option.
    script = os.path.join(os.path.dirname(os.path.relpath(__file__)), "translate.vbs")
    printed = subprocess.run([*command, "cscript", "//nologo", script], capture_output=True, text=True, timeout=120)
    if "another" in printed.stdout:
        sys.exit("compare.py: VBScript has another result")
    taken = re.search(r"same (\d+)", printed.stdout)
    return float(taken[1]) if taken else None


ours = our_milliseconds(open(sys.argv[1], encoding="utf-8").read())
print(f"\nThe same translation elsewhere (ours {ours:.3g} ms)")
for name, time_taken in [
    ("Python, re.sub", milliseconds(python_re)),
    ("Python, Jinja's compiled template", jinja()),
    ("VBScript, Scripting.Dictionary, under the same Wine", vbscript(sys.argv[2:])),
]:
    print(f"{name:<52} " + (f"{time_taken:9.3g} ms {time_taken / ours:8.1f} times ours" if time_taken else "not installed"))
