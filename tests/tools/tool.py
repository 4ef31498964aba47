"""Loads a program of tools/ as a module."""

import importlib.machinery
import importlib.util
import pathlib
import sys


def load(name):
    sys.dont_write_bytecode = True
    path = pathlib.Path(__file__).resolve().parents[2] / "tools" / name
    loader = importlib.machinery.SourceFileLoader(name.replace("-", "_"), str(path))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
    loader.exec_module(module)
    return module
