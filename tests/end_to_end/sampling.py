"""Which points of the sweeps the default run takes."""

import random

# Of each group of points, beside the first and the last.
IN_BETWEEN = 2


def choose(items, seed):
    """Returns the tests to run and those to leave out.

    A test marked `sweep(group)` is one point of a sweep; every group gives its first, its last and
    some in between. One marked `deep` is left out. All others run.
    """
    left_out = {item for item in items if item.get_closest_marker("deep")}
    groups = {}
    for item in items:
        sweep = item.get_closest_marker("sweep")
        if sweep:
            name = item.nodeid.partition("[")[0]
            groups.setdefault((name, *sweep.args), []).append(item)
    for key in sorted(groups):
        points = groups[key]
        kept = {points[0], points[-1]}
        between = points[1:-1]
        chance = random.Random(f"{seed} {key}")
        kept.update(chance.sample(between, min(IN_BETWEEN, len(between))))
        left_out.update(point for point in points if point not in kept)
    return [item for item in items if item not in left_out], [
        item for item in items if item in left_out
    ]
