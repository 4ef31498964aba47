"""What a host tells to measure, and what docs/metrics.md says that it tells."""

import collections
import http.client
import re
import subprocess

from local_host import PATIENCE, record_exchange

SAMPLE = re.compile(r"(\w+)(?:\{(.*)\})? (\S+)$")
LABEL = re.compile(r'(\w+)="((?:[^"\\]|\\.)*)"')
PARTS = re.compile(r"_(bucket|sum|count)$")

Sample = collections.namedtuple("Sample", "name labels value")


class Family:
    def __init__(self, name, kind, told):
        self.name, self.kind, self.told, self.samples = name, kind, told, []

    def value(self, **labels):
        """Of the only sample with these labels."""
        found = [sample.value for sample in self.samples if labels.items() <= sample.labels.items()]
        assert len(found) == 1, f"{self.name}{labels}: {found}"
        return found[0]


def families_in(text):
    """By name; raises for what is no line of the format."""
    families, told = {}, {}
    for line in text.splitlines():
        if line.startswith("# HELP "):
            _, _, name, words = line.split(" ", 3)
            told[name] = words
        elif line.startswith("# TYPE "):
            _, _, name, kind = line.split(" ")
            assert name not in families, f"{name} is told twice"
            families[name] = Family(name, kind, told[name])
        else:
            match = SAMPLE.match(line)
            assert match, f"no sample: {line}"
            name = match.group(1)
            family = families.get(name) or families[PARTS.sub("", name)]
            labels = LABEL.findall(match.group(2) or "")
            assert len(labels) == len(dict(labels)), line
            family.samples.append(Sample(name, dict(labels), float(match.group(3))))
    return families


def ask(host, token=None, path="/metrics", method="GET"):
    """Status, type and text."""
    connection = http.client.HTTPConnection("127.0.0.1", host.port, timeout=PATIENCE)
    try:
        connection.request(method, path, headers={} if token is None else {"Authorization": "Bearer " + token})
        answer = connection.getresponse()
        text = answer.read().decode()
        record_exchange(host.port, host.module, method, path, None, answer, text)
        return answer.status, answer.getheader("Content-Type"), text
    finally:
        connection.close()


def scrape(host):
    """The text."""
    status, _, text = ask(host, host.token())
    assert status == 200, text
    return text


def complaints(promtool, text):
    """What promtool has to say; empty when all is well."""
    done = subprocess.run([promtool, "check", "metrics"], input=text, capture_output=True, text=True, timeout=PATIENCE)
    return done.stdout + done.stderr + (f"status {done.returncode}" if done.returncode else "")


class Row:
    """A family as the document has it."""

    def __init__(self, chapter, cells):
        self.chapter = chapter
        self.name, self.kind, labels, self.samples, self.told = cells
        self.name = self.name.strip("`")
        self.labels = set(re.findall(r"`(\w+)`", labels))

    def allows(self, count, sizes):
        """Whether there may be so many samples on a machine of such sizes."""
        most = 1
        for factor in self.samples.removeprefix("at most ").split(" × "):
            most *= int(factor) if factor.isdigit() else sizes[factor]
        return count <= most if self.samples.startswith("at most ") else count == most


def rows_in(page):
    """By name, those of all tables of the document."""
    rows, chapter = {}, None
    for line in page.splitlines():
        if line.startswith("## "):
            chapter = line.removeprefix("## ")
        if line.startswith("| `"):
            row = Row(chapter, [cell.strip() for cell in line.strip("|").split("|")])
            assert row.name not in rows, f"{row.name} stands there twice"
            rows[row.name] = row
    return rows
