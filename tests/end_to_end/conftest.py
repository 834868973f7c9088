"""How pytest runs the end-to-end tests: options, displays, evidence of failures."""

import random
import re
import shutil
from pathlib import Path

import pytest
from display import Display
from sampling import choose

ROOT = Path(__file__).resolve().parent.parent.parent
EVIDENCE = ROOT / "build/end-to-end"


def pytest_addoption(parser):
    parser.addoption(
        "--installer",
        type=Path,
        default=ROOT / "build/linux/Morvella Installer.app/Morvella Installer",
        help="the executable to test",
    )
    parser.addoption("--deep", action="store_true", help="take every point of every sweep")
    parser.addoption("--seed", type=int, help="choose the sample of an earlier run again")


def pytest_configure(config):
    config.addinivalue_line("markers", "sweep: one point of many; the default run takes a sample")
    config.addinivalue_line("markers", "deep: only --deep takes it")
    config.addinivalue_line("markers", "slow: takes long, so it comes first")
    if not hasattr(config, "workerinput"):
        if config.option.seed is None:
            config.option.seed = random.SystemRandom().randrange(1_000_000)
        shutil.rmtree(EVIDENCE, ignore_errors=True)
        EVIDENCE.mkdir(parents=True)


def pytest_collection_modifyitems(config, items):
    if not config.option.deep:
        chosen, left_out = choose(items, config.option.seed)
        items[:] = chosen
        config.hook.pytest_deselected(items=left_out)
        config.left_out = left_out
    items.sort(key=lambda item: not item.get_closest_marker("slow"))


def pytest_sessionfinish(session):
    if hasattr(session.config, "workeroutput"):
        session.config.workeroutput["left_out"] = summary(session.config)


def pytest_testnodedown(node, error):
    """Every worker has chosen the same; xdist's own process has chosen nothing."""
    node.config.left_out_of_workers = getattr(node, "workeroutput", {}).get("left_out", [])


def summary(config):
    """What the sample leaves out, one line for each sweep."""
    counts = {}
    for item in getattr(config, "left_out", []):
        sweep = item.nodeid.partition("[")[0]
        counts[sweep] = counts.get(sweep, 0) + 1
    return [f"{count} points of {sweep}" for sweep, count in counts.items()]


def pytest_terminal_summary(terminalreporter, config):
    left_out = getattr(config, "left_out_of_workers", None) or summary(config)
    if left_out:
        terminalreporter.section("sampled")
        terminalreporter.line(f"--seed {config.option.seed} takes this sample again")
        for line in left_out:
            terminalreporter.line(f"--deep would add {line}")


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    report = (yield).get_result()
    if report.failed:
        command = f"/usr/bin/python3 -m pytest '{item.nodeid}' --deep"
        report.sections.append(("to run it alone", command))
        report.sections.append(("its log and its picture", f"{evidence_of(item)}.*"))


def evidence_of(item):
    return EVIDENCE / re.sub(r"\W+", "-", f"{item.parent.name}-{item.name}").strip("-")


@pytest.fixture(scope="session")
def display():
    with Display() as display:
        yield display


@pytest.fixture(scope="session")
def bundle(request):
    return request.config.option.installer.resolve().parent


@pytest.fixture
def evidence(request):
    return evidence_of(request.node)
