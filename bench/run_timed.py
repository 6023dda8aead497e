#!/usr/bin/env python3
"""Runs the timed benchmark programs interleaved: for each round, for each scene, every library's program
in turn (a, b, c, a, b, c, ...), so that all three see the same state of a shared machine and a slow spell
falls on every library alike rather than on whichever ran then. Each run's Google Benchmark output goes
to OUT_DIR/timed/<program>.<round>.<scene>.json; report.py takes the median of the rounds.
    run_timed.py BUILD_BENCH_DIR OUT_DIR ROUNDS [benchmark options...]"""
import glob, os, subprocess, sys


def scenes(program, out_dir, env):
    """The scenes a program measures ("flat/button/1000"), in its order."""
    names = subprocess.run([program, "--benchmark_list_tests"], cwd=out_dir, env=env, check=True,
                           capture_output=True, text=True).stdout.split()
    out = []
    for name in names:
        scene = name.split("/", 2)[2]
        if scene not in out:
            out.append(scene)
    return out


def main(build, out_dir, rounds, args):
    timed = os.path.join(out_dir, "timed")
    os.makedirs(os.path.join(out_dir, "data"), exist_ok=True)
    os.makedirs(timed, exist_ok=True)
    for old in glob.glob(os.path.join(timed, "*.json")):
        os.remove(old)
    env = dict(os.environ, BENCH_DATA="data")
    programs = sorted(glob.glob(os.path.join(os.path.abspath(build), "bench_*")))
    measured = {p: scenes(p, out_dir, env) for p in programs}
    order = []
    for p in programs:
        order += [s for s in measured[p] if s not in order]
    for r in range(rounds):
        for scene in order:
            for p in programs:
                if scene not in measured[p]:
                    continue
                name = os.path.basename(p)
                print("round %d/%d: %s %s" % (r + 1, rounds, name, scene), flush=True)
                out = os.path.join("timed", "%s.%d.%s.json" % (name, r, scene.replace("/", "_")))
                subprocess.run([p, "--benchmark_filter=^[a-z]+/[a-z_]+/%s$" % scene, "--benchmark_out=" + out,
                                "--benchmark_out_format=json"] + args, cwd=out_dir, env=env, check=True,
                               stdout=subprocess.DEVNULL)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], int(sys.argv[3]), sys.argv[4:])
