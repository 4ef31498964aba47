"""A simulated machine as its host tells it, and its twin: another one, made from that."""

import io
import json
import os
import subprocess
import tarfile

LISTS = {"raids": "raidId", "controllers": "id", "enddevices": "id", "ports": "id", "arrays": "id", "volumes": "id"}
STILL = {"VEXL2_CLOCK_SPEED": "0", "VEXL2_EVENT_WAIT_CAP": "20"}


def targets(get):
    """Every read of the plug-in but those of the host's own settings and of what happened, with its answer."""
    answers = {target: get(target) for target in ["state", "version", "raids?range=info", "raids?range=level", *LISTS]}
    for kind, parts in {"raids": ["", "controllers"], "controllers": ["enddevices", "arrays", "ports", "volumes"],
                        "arrays": ["enddevices", "volumes"]}.items():
        for each in answers[kind]:
            for part in parts:
                target = f"{kind}/{each[LISTS[kind]]}" + (part and "/" + part)
                answers[target] = get(target)
    return answers


def told_by(host):
    def get(target):
        status, value = host.request("GET", "mirn/" + target)
        assert status == 200, f"{target}: {status} {value}"
        return value
    return targets(get)


def write_folder(answers, folder):
    """As a bundle unpacks."""
    for target, value in answers.items():
        if "?" in target:
            continue
        file = folder / "api" / "v1" / "mirn" / (target + ".json")
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(json.dumps(value))


def packed(folder):
    """As a bundle is."""
    result = io.BytesIO()
    with tarfile.open(fileobj=result, mode="w:gz", format=tarfile.USTAR_FORMAT) as archive:
        for file in sorted(folder.rglob("*.json")):
            archive.add(file, file.relative_to(folder).as_posix())
    return result.getvalue()


def write_twin(program, bundle, scenario):
    """What the program tells on standard error."""
    done = subprocess.run([program, "--from-bundle", bundle, "--output", scenario], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, timeout=60, text=True, check=False, env={**os.environ})
    assert done.returncode == 0, done.stderr
    return done.stderr


def mapped_ids(original, twin):
    """The ids of the one by those of the other, by their places in the lists."""
    ids = {}
    for kind, key in LISTS.items():
        assert len(original[kind]) == len(twin[kind]), f"{kind}: {len(original[kind])} and {len(twin[kind])}"
        for one, other in zip(original[kind], twin[kind]):
            ids[one[key]] = other[key]
    assert len(set(ids.values())) == len(ids), "two objects have one twin"
    return ids


def with_ids(value, ids):
    """With every id in it replaced, those in targets, too."""
    if isinstance(value, dict):
        return {"/".join(ids.get(part, part) for part in key.split("/")): with_ids(each, ids)
                for key, each in value.items()}
    if isinstance(value, list):
        return [with_ids(each, ids) for each in value]
    return ids.get(value, value) if isinstance(value, str) else value


def with_texts(value, instead):
    """With every text of `instead` replaced wherever it stands in another one, but for the names of members."""
    if isinstance(value, dict):
        return {key: with_texts(each, instead) for key, each in value.items()}
    if isinstance(value, list):
        return [with_texts(each, instead) for each in value]
    if isinstance(value, str):
        for text, other in instead.items():
            value = value.replace(text, other)
    return value


def differences(original, twin):
    """Where the twin tells another thing, as lines; none where it is one."""
    expected = with_ids(original, mapped_ids(original, twin))
    lines = []

    def compare(place, one, other):
        if isinstance(one, dict) and isinstance(other, dict):
            for key in sorted(set(one) | set(other)):
                compare(f"{place}.{key}", one.get(key, "missing"), other.get(key, "missing"))
        elif isinstance(one, list) and isinstance(other, list) and len(one) == len(other):
            for index, pair in enumerate(zip(one, other)):
                compare(f"{place}[{index}]", *pair)
        elif one != other:
            lines.append(f"{place}: {json.dumps(one)} became {json.dumps(other)}")

    compare("", expected, twin)
    return lines
