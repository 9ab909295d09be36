"""The examples of the doc strings."""

from __future__ import annotations

import doctest
import importlib

import pytest

HOLDING = {"": 1, ".attach": 1, ".frame": 1, ".recording": 1, ".simulation": 1}


@pytest.mark.parametrize("module", HOLDING)
def test_doc_strings_do_as_they_say(module):
    result = doctest.testmod(importlib.import_module("zuma" + module))
    assert result.failed == 0 and result.attempted >= HOLDING[module]
