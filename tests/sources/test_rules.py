"""Static rules that no run of the installer can check, and examples that break them."""

import re
from dataclasses import dataclass

import pytest
from product import ROOT

CORE = tuple(f"{f}/*.[ch]pp" for f in ("app", "archive", "install", "live", "platform"))
COCOA = ("app/*.mm", "app/*.h", "platform/cocoa/*.mm", "platform/cocoa/*.h")


@dataclass(frozen=True)
class Rule:
    """The pattern occurs `times` in the code of the files, ignoring comments and literals."""

    name: str
    files: tuple
    pattern: str
    times: int
    examples: tuple  # each breaks the rule


RULES = (
    Rule(
        "only terminate: ends the process",
        CORE + COCOA,
        r"\b(?:_?exit|_Exit|quick_exit|abort|std::terminate|raise|kill|__builtin_trap)\s*\(",
        0,
        ("exit(1);", "std::terminate();", "kill(getpid(), SIGKILL);"),
    ),
    Rule(
        "only the interface file creates the licence controller",
        COCOA,
        r"\[\s*MorvellaInstallerLicenseVC\b|\bNSClassFromString\b",
        0,
        ("[[MorvellaInstallerLicenseVC alloc] init];", "[MorvellaInstallerLicenseVC new];"),
    ),
    Rule(
        "every property is declared atomic",
        COCOA,
        r"@property(?!\s*\(\s*atomic\b)",
        0,
        ("@property(nonatomic) int more;", "@property(strong) id more;", "@property int more;"),
    ),
    Rule(
        "only the start of the installation and an alert without a window are deferred",
        CORE + COCOA,
        r"\bdispatch_(?:async|sync|after|barrier)\w*|\bmainQueue\b|\bperformBlock\w*:",
        2,
        ("dispatch_async(queue, block);", "[[NSRunLoop mainRunLoop] performBlock:block];"),
    ),
    Rule(
        "only one timer is created",
        CORE + COCOA,
        r"\b(?:scheduledT|t)imerWithTimeInterval\b|\binitWithFireDate\b|\bdispatch_source_create\b",
        1,
        ("[NSTimer scheduledTimerWithTimeInterval:1 repeats:NO block:block];",),
    ),
    Rule(
        "an installation first removes the obsolete files of earlier versions",
        ("install/orchestration.cpp",),
        r"removeFilesFromFolder\(\{product::obsoleteItems\.begin\(\), "
        r"product::obsoleteItems\.end\(\)\},\s*destination\);\s*installTo\(destination\);",
        1,
        (
            "removeFilesFromFolder({product::obsoleteItems.begin(), "
            "product::obsoleteItems.end()}, destination); installTo(destination);",
        ),
    ),
    Rule(
        "everything runs on the main thread",
        CORE + COCOA,
        r"\bstd::(?:jthread|thread|async|mutex)\b|\bNS(?:Thread|OperationQueue|Lock)\b"
        r"|@synchronized|\bpthread_\w+|\bperformSelectorInBackground\b|\bdispatch_get_global\w+",
        0,
        ("std::thread worker(work);", "[NSThread new];", "@synchronized(self) {}"),
    ),
)

IGNORED = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', re.DOTALL)


def sources():
    """{path: text} of every source of the installer."""
    paths = {path for pattern in CORE + COCOA for path in ROOT.glob(pattern)}
    return {path.relative_to(ROOT): path.read_text(encoding="utf-8") for path in sorted(paths)}


def places(rule, texts):
    """Path and line of each place where the pattern of the rule occurs."""
    found = []
    for path, text in texts.items():
        if any(path.match(pattern) for pattern in rule.files):
            code = IGNORED.sub(lambda m: "\n" * m[0].count("\n"), text)
            for match in re.finditer(rule.pattern, code):
                found.append(f"{path}:{code.count(chr(10), 0, match.start()) + 1}")
    return found


each_rule = pytest.mark.parametrize("rule", RULES, ids=lambda rule: rule.name)


def with_addition(rule, addition):
    """The sources with one more line in the first file that the rule covers."""
    texts = sources()
    path = next(path for path in texts if any(path.match(each) for each in rule.files))
    return texts | {path: f"{texts[path]}{addition}\n"}


@each_rule
def test_rule_holds(rule):
    found = places(rule, sources())
    assert len(found) == rule.times, found


@each_rule
def test_examples_break_the_rule(rule):
    for example in rule.examples:
        assert len(places(rule, with_addition(rule, example))) > rule.times, example


@each_rule
@pytest.mark.parametrize("harmless", ["// {}", "/* {}\n*/", 'text = "\\"{}";'])
def test_comments_and_literals_break_no_rule(rule, harmless):
    for example in rule.examples:
        assert len(places(rule, with_addition(rule, harmless.format(example)))) == rule.times


def test_rules_cover_every_source_of_the_product():
    built = re.findall(r"\S+\.(?:cpp|mm)\b", (ROOT / "CMakeLists.txt").read_text())
    assert len(built) > 1
    assert set(built) <= {str(path) for path in sources()}
