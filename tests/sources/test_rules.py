"""The sources keep the rules, and each rule can be broken."""

import re

import pytest
from product import ROOT
from source_rules import RULES, places, sources

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
def test_rule_can_be_broken(rule):
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
