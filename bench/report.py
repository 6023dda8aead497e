#!/usr/bin/env python3
"""Merges the benchmark outputs in a directory (instructions.json from count_instructions.py, timed/*.json
from Google Benchmark over several interleaved rounds, memory_*.json from the memory programs) into
results.json, results.md and the charts: one row per operation and scene, one column per library, and
the ratios gameui/peer (below 1: gameui is cheaper). Times are the median of the rounds."""
import glob, json, os, platform, statistics, sys, time
import charts

LIBS = ["gameui", "cegui", "mygui"]
UNITS = {"load": "µs/widget", "load_mbs": "MB/s", "frame": "ns/widget", "frame_half_hidden": "ns/widget",
         "frame_dirty": "ns/widget", "move": "ns/event", "click": "ns/event", "move_focus": "ns/event",
         "click_focus": "ns/event", "getwidget": "ns/call", "trace": "ns/call"}
INSTRUCTION_UNITS = {"load": "per widget", "frame": "per widget", "frame_dirty": "per widget",
                     "move": "per event", "click": "per event", "getwidget": "per call"}
TO_NS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def figures(bench):
    lib, op, scene = bench["name"].split("/", 2)
    # CPU time of the benchmark thread: on a shared machine it is less disturbed than wall time.
    ns = bench["cpu_time"] * TO_NS[bench["time_unit"]]
    if op == "load":
        yield lib, "load", scene, ns / 1e3 / bench["widgets"]
        if "bytes_per_second" in bench:
            yield lib, "load_mbs", scene, bench["bytes_per_second"] / 1e6
    elif op.startswith("frame"):
        yield lib, op, scene, ns / bench["widgets"]
    elif "events" in bench:
        yield lib, op, scene, ns / bench["events"]
    else:
        yield lib, op, scene, ns


def row_order(key):
    op, scene = key
    shape, kind, count = scene.split("/")
    return int(count), shape != "flat", kind != "container", list(UNITS).index(op) if op in UNITS else len(UNITS)


def table(rows, fmt):
    """Markdown rows: operation, scene, unit, the three libraries and the ratios gameui/peer."""
    out = ["| operation | scene | unit | gameui | CEGUI | MyGUI | gameui/CEGUI | gameui/MyGUI |",
           "|---|---|---|---:|---:|---:|---:|---:|"]
    for v in rows:
        g = v.get("gameui")
        ratio = lambda peer: fmt(g / v[peer]) if g is not None and v.get(peer) else ""
        out.append("| %s | %s | %s | %s | %s | %s | %s | %s |" % (
            v["operation"], v["scene"], v["unit"], fmt(g), fmt(v.get("cegui")), fmt(v.get("mygui")),
            ratio("cegui"), ratio("mygui")))
    return out


def machine():
    cpu = platform.processor()
    try:
        for line in open("/proc/cpuinfo"):
            if line.startswith("model name"):
                cpu = line.split(":", 1)[1].strip()
                break
    except OSError:
        pass
    return {"cpu": cpu, "cores": os.cpu_count(), "system": platform.platform(),
            "load_average": os.getloadavg(), "date": time.strftime("%Y-%m-%d %H:%M UTC", time.gmtime())}


def main(directory):
    samples = {}
    for path in sorted(glob.glob(os.path.join(directory, "timed", "*.json"))):
        for bench in json.load(open(path))["benchmarks"]:
            if bench.get("error_occurred"):
                continue
            for lib, op, scene, value in figures(bench):
                samples.setdefault((op, scene), {}).setdefault(lib, []).append(value)
    times = {k: {lib: statistics.median(v) for lib, v in libs.items()}
             for k, libs in sorted(samples.items(), key=lambda kv: row_order(kv[0]))}
    rounds = max((len(v) for libs in samples.values() for v in libs.values()), default=0)
    counted = {}
    path = os.path.join(directory, "instructions.json")
    for lib, ops in (json.load(open(path)) if os.path.exists(path) else {}).items():
        for name, value in ops.items():
            counted.setdefault(tuple(name.split(" ")), {})[lib] = value
    counted = dict(sorted(counted.items(), key=lambda kv: row_order(kv[0])))
    memory = {}
    for lib in LIBS:
        path = os.path.join(directory, "memory_%s.json" % lib)
        if os.path.exists(path):
            memory[lib] = json.load(open(path))

    rows = lambda data, unit: [{"operation": op, "scene": scene, "unit": unit(op), **values}
                               for (op, scene), values in data.items()]
    result = {"machine": machine(), "rounds": rounds,
              "instructions": rows(counted, lambda op: INSTRUCTION_UNITS.get(op, "")),
              "rows": rows(times, lambda op: UNITS.get(op, "")), "memory": memory}
    json.dump(result, open(os.path.join(directory, "results.json"), "w"), indent=1)
    charts.draw(result, directory)

    m = result["machine"]
    fmt = lambda v: "" if v is None else ("%.3g" % v if v < 100 else "%.0f" % v)
    out = ["# gameui benchmark results", "",
           "Ratios are gameui/peer: below 1 gameui is cheaper (0.05 = 20 times cheaper); MB/s is the other "
           "way round.", "", "## Instructions", "",
           "Executed by the library for the operation (callgrind), the same on every run and machine load.",
           ""]
    out += table(result["instructions"], fmt)
    out += ["", "## Times", "",
            "CPU time, median of %d interleaved rounds. %s, %s cores, %s; load average at the end %.2f; %s." %
            (rounds, m["cpu"], m["cores"], m["system"], m["load_average"][0], m["date"]), ""]
    out += table(result["rows"], fmt)
    out += ["", "## Memory", "",
            "| library | scene | bytes/widget (heap) | bytes/widget (library's count) | allocations/frame | "
            "allocations/event | allocations/event through the focus stack |", "|---|---|---:|---:|---:|---:|---:|"]
    for lib, data in memory.items():
        for scene, s in data.get("scenes", {}).items():
            out.append("| %s | %s | %.0f | %s | %s | %s | %s |" % (
                lib, scene, s["heap_bytes_per_widget"], fmt(s.get("bytes_per_widget")),
                fmt(s.get("allocs_per_frame")), fmt(s.get("allocs_per_event")),
                fmt(s.get("allocs_per_event_focus"))))
    if "gameui" in memory:
        out += ["", "## gameui: bytes per widget of each type (the object alone)", "",
                "| type | bytes |", "|---|---:|"]
        out += ["| %s | %d |" % kv for kv in memory["gameui"]["bytes_per_type"].items()]
    open(os.path.join(directory, "results.md"), "w").write("\n".join(out) + "\n")


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else ".")
