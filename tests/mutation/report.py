"""What came of the changes."""

from pathlib import Path

EQUIVALENT = Path(__file__).resolve().parent / "equivalent.txt"
WANTED = 95  # of 100, in every part


def listed_reasons():
    """{a change's name: why it makes no difference}; the reason stands indented below the name."""
    reasons, name = {}, None
    for line in EQUIVALENT.read_text(encoding="utf-8").splitlines():
        if line.startswith("    "):
            reasons[name] = f"{reasons[name]} {line.strip()}".strip()
        elif line and not line.startswith("#"):
            name = line
            reasons[name] = ""
    return reasons


def report(tried, results, complete):
    """Prints what came of the changes of each part; returns whether that is good enough.

    `tried` has the changes by part, `results` whether each was noticed, without those that do not
    compile. With `complete`, a reason for a change that is noticed or gone is a mistake."""
    reasons, good, survivors = listed_reasons(), True, []
    for changes in tried.values():
        survivors += [change for change in changes if results.get(change) is False]
    listed = [change for change in survivors if reasons.get(change.name)]
    unknown = [change for change in survivors if change not in listed]
    for title, found in (("no difference to notice", listed), ("in no list", unknown)):
        print(f"\nNot noticed, and {title}:")
        for change in found:
            print(f"  {change.path}:{change.line} {change.name}")
            if change in listed:
                print(f"      {reasons[change.name]}")
    stale = set(reasons) - {change.name for change in survivors} if complete else set()
    if stale:
        print("\nIn the list, but noticed or gone:")
        print("".join(f"  {name}\n" for name in sorted(stale)), end="")
    print()
    for part, changes in tried.items():
        good &= _report_part(part, [results[change] for change in changes if change in results])
        print(f", {sum(change not in results for change in changes)} do not compile")
    return good and not unknown and not stale


def _report_part(part, results):
    noticed, total = sum(results), len(results)
    print(f"{part}: {noticed} of {total} noticed", end="")
    if total:
        print(f" ({100 * noticed / total:.1f} of 100)", end="")
    return 100 * noticed >= WANTED * total
