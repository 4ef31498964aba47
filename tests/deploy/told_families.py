"""What hosts tell to measure, and what expressions ask for that they do not."""

import re

# Of Prometheus itself, and what it adds to each sample.
OTHERS = {"up": set()}
ADDED = {"job", "instance"}
SELECTOR = re.compile(r"\b([a-zA-Z_:][\w:]*)\s*(\{[^}]*\})?")
WORDS = {"sum", "rate", "histogram_quantile", "increase", "changes", "time", "by", "on", "group_left", "and", "or", "unless", "offset"}


def labels_of_families(sources):
    """Of each family, as docs/metrics.md has them, which its own test holds to a host."""
    families = dict(OTHERS)
    for line in (sources / "docs" / "metrics.md").read_text(encoding="utf-8").splitlines():
        if line.startswith("| `"):
            name, _, labels = [cell.strip() for cell in line.strip("|").split("|")][:3]
            families[name.strip("`")] = set(re.findall(r"`(\w+)`", labels))
    return families


def faults_of(expression, families):
    """Names of families and labels in an expression that there are not."""
    for labels in re.findall(r"\b(?:by|on|group_left)\s*\(([^)]*)\)", expression):
        known = set().union(*families.values()) | ADDED
        yield from (f"label {label}" for label in re.findall(r"\w+", labels) if label not in known)
    bare = re.sub(r"\b(?:by|on|group_left)\s*\([^)]*\)|\[[^]]*\]|offset \w+", " ", expression)
    for name, matchers in SELECTOR.findall(bare):
        if name in WORDS:
            continue
        if name not in families:
            yield f"family {name}"
            continue
        for label in re.findall(r'(\w+)\s*(?:=~|!~|!=|=)\s*"', matchers):
            if label not in families[name] | ADDED:
                yield f"label {label} of {name}"
