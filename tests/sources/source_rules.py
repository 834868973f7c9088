"""What only reading the sources shows: rules that no test of the running installer can hold."""

import re
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CORE = tuple(f"{f}/*.[ch]pp" for f in ("app", "archive", "install", "live", "platform"))
COCOA = ("app/*.mm", "app/*.h", "platform/cocoa/*.mm", "platform/cocoa/*.h")
DOOR = ("platform/cocoa/MorvellaInstallerViewController.h",)


@dataclass(frozen=True)
class Rule:
    """`pattern` stands `times` in the code of `files`, comments and texts apart."""

    name: str
    files: tuple
    pattern: str
    times: int
    example: str  # one more that the rule must notice


RULES = (
    Rule(
        "nothing ends the process but terminate:",
        CORE + COCOA,
        r"\b(?:_?exit|_Exit|quick_exit|abort|std::terminate|__builtin_trap)\b",
        0,
        "void leave() { exit(1); }",
    ),
    Rule("operations know no error objects", CORE, r"\bNSError\b", 0, "class NSError;"),
    Rule(
        "only the interface file makes the licence controller",
        CORE + COCOA,
        r"\[\s*MorvellaInstallerLicenseVC\b|\bNSClassFromString\b",
        0,
        "id vc = [[MorvellaInstallerLicenseVC alloc] init];",
    ),
    Rule(
        "the controller has twenty properties",
        DOOR,
        r"@property\s*\(\s*atomic\s*(?:,\s*strong\s*)?\)",
        20,
        "@property(atomic, strong) NSString* another;",
    ),
    Rule("every property is atomic", DOOR, r"\bnonatomic\b", 0, "@property(nonatomic) int more;"),
    Rule(
        "one piece of work is put off to the main queue",
        CORE + COCOA,
        r"\bdispatch_(?:async|sync|after|barrier_async)\w*",
        1,
        "dispatch_async(queue, block);",
    ),
    Rule(
        "one timer",
        CORE + COCOA,
        r"\b(?:scheduledT|t)imerWithTimeInterval\b|\binitWithFireDate\b",
        1,
        "[NSTimer scheduledTimerWithTimeInterval:1 repeats:NO block:block];",
    ),
    Rule(
        "an installation first removes what earlier versions left over",
        ("install/orchestration.cpp",),
        r"removeFilesFromFolder\(\{product::obsoleteItems\.begin\(\), "
        r"product::obsoleteItems\.end\(\)\},\s*destination\);\s*installTo\(destination\);",
        1,
        "removeFilesFromFolder({product::obsoleteItems.begin(), product::obsoleteItems.end()}, "
        "destination); installTo(destination);",
    ),
    Rule(
        "nothing runs beside the main thread",
        CORE + COCOA,
        r"\bstd::(?:jthread|thread|async|mutex)\b|\bNS(?:Thread|OperationQueue|Lock)\b"
        r"|@synchronized|\bpthread_\w+|\bperformSelectorInBackground\b|\bdispatch_get_global\w+",
        0,
        "std::thread worker(work);",
    ),
)

IGNORED = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', re.DOTALL)


def sources():
    """{path: text} of all that the installer is made of."""
    paths = {path for pattern in CORE + COCOA for path in ROOT.glob(pattern)}
    return {path.relative_to(ROOT): path.read_text(encoding="utf-8") for path in sorted(paths)}


def places(rule, texts):
    """Path and line of each place where the rule's pattern stands."""
    found = []
    for path, text in texts.items():
        if any(path.match(pattern) for pattern in rule.files):
            code = IGNORED.sub(lambda m: "\n" * m[0].count("\n"), text)
            for match in re.finditer(rule.pattern, code):
                found.append(f"{path}:{code.count(chr(10), 0, match.start()) + 1}")
    return found
