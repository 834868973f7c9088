"""Options, fixtures and the sampling of the end-to-end tests."""

import random
import re
import shutil
import sys
from pathlib import Path

import pytest

import folders
from display import Display

sys.dont_write_bytecode = True

ROOT = Path(__file__).resolve().parent.parent.parent
EVIDENCE = ROOT / "build/end-to-end"
# A default run includes the first and the last point of each sweep, and this many in between.
IN_BETWEEN = 1


def pytest_addoption(parser):
    parser.addoption(
        "--installer",
        type=Path,
        default=ROOT / "build/linux/Morvella Installer.app/Morvella Installer",
        help="the executable to test",
    )
    parser.addoption("--deep", action="store_true", help="run every point of every sweep")
    parser.addoption("--seed", type=int, help="repeat the sample of an earlier run")


def pytest_configure(config):
    config.addinivalue_line("markers", "sweep(group): one point of many, of which a sample runs")
    config.addinivalue_line("markers", "deep: runs only with --deep")
    config.addinivalue_line("markers", "slow: takes long, so it runs first")
    if not hasattr(config, "workerinput"):
        if config.option.seed is None:
            config.option.seed = random.SystemRandom().randrange(1_000_000)
        shutil.rmtree(EVIDENCE, ignore_errors=True)
        EVIDENCE.mkdir(parents=True)


def pytest_collection_modifyitems(config, items):
    left_out = set() if config.option.deep else not_in_sample(items, config.option.seed)
    items[:] = [item for item in items if item not in left_out]
    items.sort(key=lambda item: not item.get_closest_marker("slow"))
    config.hook.pytest_deselected(items=left_out)


def not_in_sample(items, seed):
    left_out = {item for item in items if item.get_closest_marker("deep")}
    groups = {}
    for item in items:
        if sweep := item.get_closest_marker("sweep"):
            groups.setdefault((item.nodeid.partition("[")[0], *sweep.args), []).append(item)
    for key, points in groups.items():
        between = points[1:-1]
        chosen = random.Random(f"{seed} {key}").sample(between, min(IN_BETWEEN, len(between)))
        left_out.update(point for point in between if point not in chosen)
    return left_out


def pytest_terminal_summary(terminalreporter, config):
    if not config.option.deep:
        seed = f"--seed {config.option.seed}"
        terminalreporter.line(f"{seed} repeats this sample of the sweeps, --deep runs all of them")


@pytest.fixture
def evidence(request):
    """The path, without an extension, of the log and picture of a failed test."""
    name = f"{request.node.parent.name}-{request.node.name}"
    return EVIDENCE / re.sub(r"\W+", "-", name).strip("-")


@pytest.fixture(scope="session")
def display():
    with Display() as display:
        yield display


@pytest.fixture(scope="session")
def build(request):
    """A copy of the parts of the build folder that the tests need, readable by every user."""
    bundle = request.config.option.installer.resolve().parent
    with folders.temporary_folder("build") as copy:
        shutil.copytree(bundle, copy / bundle.name, symlinks=True)
        modules = copy / "tests/end_to_end"
        modules.mkdir(parents=True)
        for module in (bundle.parent / "tests/end_to_end").glob("*.so"):
            shutil.copy(module, modules)
        yield copy
