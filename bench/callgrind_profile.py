"""Reads what callgrind writes."""

import collections

ALLOCATING = {"malloc", "calloc", "realloc", "aligned_alloc", "posix_memalign", "memalign"}


class Profile:
    """Of a profile: `instructions`, `allocations` (calls of what allocates), and `functions`, the instructions of each by
    its name, without those that it calls."""

    def __init__(self, file):
        self.instructions, self.allocations, self.functions = 0, 0, collections.Counter()
        names, function, called, is_of_call = {}, None, None, False

        def name_of(text):
            number, _, name = text.partition(" ")
            return names.setdefault(number, name)

        for line in file.read_text().splitlines():
            if line.startswith("cfn="):
                called = name_of(line[4:])
            elif line.startswith("fn="):
                function = name_of(line[3:])
            elif line.startswith("calls="):
                self.allocations += int(line[6:].split()[0]) if called in ALLOCATING else 0
                is_of_call = True
            elif line.startswith("totals:"):
                self.instructions = int(line.split()[1])
            elif line[:1] in "+-*0123456789" and line:
                if not is_of_call:
                    self.functions[function] += int(line.split()[-1])
                is_of_call = False
