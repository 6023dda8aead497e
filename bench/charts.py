"""The comparison as SVG charts (matplotlib), written next to the results:
- instructions.svg: instructions per widget, event or call of each operation, grouped by operation for
  gameui, CEGUI and MyGUI, one panel per 1,000-widget scene, on a log scale;
- times.svg: the same for the median CPU times;
- scaling.svg: gameui's load and frame cost per widget against widget count, the peers' at 1,000.
The files hold still between runs of the same figures: no date, fixed element ids, text kept as text."""
import os
import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt

LIBS = [("gameui", "gameui", "#1b9e77"), ("cegui", "CEGUI", "#d95f02"), ("mygui", "MyGUI", "#7570b3")]
OPS = ["load", "frame", "frame_dirty", "move", "click", "getwidget"]
SCENES = ["flat/container/1000", "flat/button/1000", "nested/container/1000", "nested/button/1000"]
plt.rcParams.update({"svg.hashsalt": "gameui", "svg.fonttype": "none", "font.size": 9})


def save(fig, directory, name):
    fig.tight_layout()
    fig.savefig(os.path.join(directory, name), metadata={"Date": None})
    plt.close(fig)


def grouped_bars(rows, unit, title, directory, name):
    """One panel per scene; per operation a bar for each library, on a log scale."""
    by_key = {(r["operation"], r["scene"]): r for r in rows}
    fig, axes = plt.subplots(2, 2, figsize=(10, 6.5), sharey=True)
    for ax, scene in zip(axes.flat, SCENES):
        ops = [op for op in OPS if (op, scene) in by_key]
        for i, (lib, label, colour) in enumerate(LIBS):
            xs = [x + (i - 1) * 0.27 for x in range(len(ops))]
            ys = [by_key[(op, scene)].get(lib) or 0 for op in ops]
            ax.bar(xs, ys, width=0.27, label=label, color=colour)
        ax.set_yscale("log")
        ax.set_xticks(range(len(ops)), [op + "\n(" + by_key[(op, scene)]["unit"] + ")" for op in ops],
                      fontsize=7)
        ax.set_title(scene)
        ax.grid(axis="y", which="major", alpha=0.3)
    axes[0][0].set_ylabel(unit)
    axes[1][0].set_ylabel(unit)
    axes[0][0].legend()
    fig.suptitle(title)
    save(fig, directory, name)


def scaling(rows, directory):
    """gameui's cost per widget against widget count, one line per scene kind; peers as points at 1,000."""
    fig, axes = plt.subplots(1, 2, figsize=(10, 4))
    for ax, op in zip(axes, ["load", "frame"]):
        lines = {}
        for r in rows:
            if r["operation"] != op:
                continue
            shape, kind, count = r["scene"].split("/")
            for lib, label, colour in LIBS:
                if lib in r:
                    lines.setdefault((lib, label, colour, shape + "/" + kind), []).append((int(count), r[lib]))
        for (lib, label, colour, kind), points in sorted(lines.items()):
            points.sort()
            style = {"flat/container": "o-", "flat/button": "s-", "nested/container": "o--",
                     "nested/button": "s--"}[kind]
            ax.plot([p[0] for p in points], [p[1] for p in points], style, color=colour,
                    label="%s %s" % (label, kind), markersize=4)
        ax.set_xscale("log")
        ax.set_yscale("log")
        ax.set_xlabel("widgets in the scene")
        ax.set_ylabel(UNIT[op])
        ax.set_title(op)
        ax.grid(which="major", alpha=0.3)
    axes[1].legend(fontsize=7, ncol=1)
    fig.suptitle("Cost per widget against widget count (CPU time, median of the rounds)")
    save(fig, directory, "scaling.svg")


UNIT = {"load": "µs per widget", "frame": "ns per widget"}


def draw(result, directory):
    if result["instructions"]:
        grouped_bars(result["instructions"], "instructions",
                     "Instructions per widget, event or call (callgrind; lower is cheaper)", directory,
                     "instructions.svg")
    if result["rows"]:
        # Loads are given in µs per widget: on one axis with the rest they are shown in ns.
        rows = [dict(r, **{lib: r[lib] * 1e3 for lib, _, _ in LIBS if lib in r}, unit="ns/widget")
                if r["operation"] == "load" else r for r in result["rows"] if r["scene"] in SCENES]
        grouped_bars(rows, "ns",
                     "CPU time per widget, event or call (median of the rounds; lower is cheaper)", directory,
                     "times.svg")
        scaling(result["rows"], directory)
