"""The examples of the doc strings."""

from __future__ import annotations

import doctest
import importlib
import os
import re
from pathlib import Path

import pytest

HOLDING = {"": 1, ".attach": 1, ".frame": 1, ".recording": 1, ".simulation": 1}


@pytest.mark.parametrize("module", HOLDING)
def test_doc_strings_do_as_they_say(module):
    result = doctest.testmod(importlib.import_module("zuma" + module))
    assert result.failed == 0 and result.attempted >= HOLDING[module]


def test_the_page_does_as_it_says():
    page = Path(os.environ["ZUMA_EXAMPLES"]).parents[1] / "docs" / "python.md"
    blocks = re.findall(r"```pycon\n(.*?)```", page.read_text(), re.S)
    test = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, page.name, str(page), 0)
    result = doctest.DocTestRunner(optionflags=doctest.IGNORE_EXCEPTION_DETAIL).run(test)
    assert result.failed == 0 and result.attempted > 20
