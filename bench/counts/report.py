"""Prints the table of counts and judges the bars: report.py CALLGRIND_OUT CALLS_TSV."""

import collections
import re
import sys

AT_LEAST_FEWER = 10  # times as many instructions in the peer

# Row, most instructions, most allocations; none: no bar.
BARS = [
    ("announcement", 1000, 0),
    ("reply", 1000, 0),
    ("setter", 900, 2),
    ("exchange", None, 0),
    ("traced exchange", None, 0),
]
# Without a peer.
ALSO = [
    ("announcement, whole turn", None, 0),
    ("setter, new block in the queue", None, 3),
    ("end of a key capture", None, 1),
    ("callbacks registered again", None, 0),
]
# Peers that have it easier, and the rows that they stand beside.
EASIER_PEERS = [
    ("reply, the key kept beside the message", "reply"),
    ("traced exchange, its formatting not charged", "traced exchange"),
]
# What reaches the system; the others are too little to tell, or the C runtime's own.
SYSTEM_CALLS = """CreateEventW CloseHandle SetEvent ResetEvent ReadFile WriteFile CancelIoEx
    GetOverlappedResult WaitForSingleObject WaitForMultipleObjects""".split()


def read_instructions(path):
    """How many instructions each part of callgrind's output holds, by the name of its row."""
    instructions = collections.defaultdict(list)
    row = None
    for line in open(path, encoding="utf-8"):
        if match := re.match(r"desc: Trigger: Client Request: (.*)", line):
            row = match[1]
        elif (match := re.match(r"totals: (\d+)", line)) and row:
            instructions[row].append(int(match[1]))
            row = None
    return instructions


def read_calls(path):
    """For each row, in each of its turns: allocations and calls."""
    turns = collections.defaultdict(list)
    for line in open(path, encoding="utf-8"):
        row, name, count = line.rstrip("\n").split("\t")
        if name == "allocations":
            turns[row].append(collections.Counter())
        turns[row][-1][name] = int(count)
    return turns


def read_rows(callgrind_out, calls_tsv):
    instructions = read_instructions(callgrind_out)
    calls = read_calls(calls_tsv)
    # What is left in the count of starting and ending a row, and of each pause in it.
    empty = instructions.pop("empty")[0]
    pause = instructions.pop("pause")[0] - empty
    rows = {}
    for row, counts in instructions.items():
        turns = [
            (count - empty - pause * turn["pauses"], turn)
            for count, turn in zip(counts, calls[row], strict=True)
        ]
        rows[row] = min(turns, key=lambda turn: turn[0])
        if row == "setter":
            rows["setter, new block in the queue"] = max(turns, key=lambda turn: turn[0])
            if sum(turn != rows[row] for turn in turns) > 1:
                sys.exit("report.py: more than one setter in eight differs from the others")
    return rows


def bar(name, value, limit, missed):
    if limit is None:
        return f"{value:,}"
    if value > limit:
        missed.append(name)
        return f"{value:,} (MISSED: at most {limit:,})"
    return f"{value:,} (at most {limit:,})"


def main():
    rows = read_rows(sys.argv[1], sys.argv[2])
    missed = []
    print("| row | instructions | allocations | peer: instructions | allocations | fewer |")
    print("| --- | --- | --- | --- | --- | --- |")
    for name, most_instructions, most_allocations in BARS + ALSO:
        instructions, calls = rows[name]
        cells = [
            name,
            bar(name, instructions, most_instructions, missed),
            bar(name, calls["allocations"], most_allocations, missed),
        ]
        if peer := rows.get(name + ", peer"):
            fewer = peer[0] / instructions
            cells += [f"{peer[0]:,}", f"{peer[1]['allocations']:,}", f"{fewer:.1f} times"]
            if fewer < AT_LEAST_FEWER:
                missed.append(name)
                cells[-1] += f" (MISSED: at least {AT_LEAST_FEWER})"
        else:
            cells += ["", "", ""]
        print("| " + " | ".join(cells) + " |")

    print("\n| an easier peer | instructions | allocations | fewer in the library |")
    print("| --- | --- | --- | --- |")
    for name, beside in EASIER_PEERS:
        instructions, calls = rows[name]
        fewer = instructions / rows[beside][0]
        print(f"| {name} | {instructions:,} | {calls['allocations']} | {fewer:.1f} times |")

    columns = ["exchange", "announcement, whole turn", "setter"]
    print("\n| call | " + " | ".join(columns) + " |")
    print("| --- |" + " --- |" * len(columns))
    for call in SYSTEM_CALLS:
        print(f"| {call} | " + " | ".join(str(rows[row][1][call]) for row in columns) + " |")
    if missed:
        sys.exit("count.sh: bars missed: " + ", ".join(missed))


main()
