#!/usr/bin/env python3
"""Counts the instructions each library executes for the probe's operations: runs build/bench/bench/probe_*
under callgrind (collecting only between the probe's client requests) and writes instructions.json to the
output directory, {library: {"<operation> <scene>": instructions per unit}}. Instruction counts do not
depend on what else the machine runs, so these are the figures to compare.
    count_instructions.py BUILD_BENCH_DIR OUT_DIR"""
import glob, json, os, subprocess, sys


def counts(dumps):
    """{"<operation> <scene>": instructions per unit} from callgrind's dump files."""
    out = {}
    trigger = b"desc: Trigger: Client Request: "
    for path in dumps:
        name = total = None
        for line in open(path, "rb"):
            if line.startswith(trigger):
                name = line[len(trigger):].decode().strip()
            elif line.startswith(b"totals: "):
                total = int(line.split()[1])
        if name and total is not None:
            operation, scene, units = name.split(" ")
            out[operation + " " + scene] = total / int(units)
    return out


def main(build, out_dir):
    work = os.path.join(out_dir, "callgrind")
    os.makedirs(os.path.join(out_dir, "data"), exist_ok=True)
    os.makedirs(work, exist_ok=True)
    result = {}
    for probe in sorted(glob.glob(os.path.join(build, "probe_*"))):
        lib = os.path.basename(probe)[len("probe_"):]
        for old in glob.glob(os.path.join(work, lib + ".out*")):
            os.remove(old)
        print("callgrind: %s" % lib, flush=True)
        # From the output directory, where the peers write their own log files.
        subprocess.run(["nice", "-n", "10", "valgrind", "--tool=callgrind", "--collect-atstart=no",
                        "--callgrind-out-file=" + os.path.abspath(os.path.join(work, lib + ".out")),
                        os.path.abspath(probe), "data"],
                       cwd=out_dir, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        result[lib] = counts(glob.glob(os.path.join(work, lib + ".out.*")))
    json.dump(result, open(os.path.join(out_dir, "instructions.json"), "w"), indent=1, sort_keys=True)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
