"""Objects by their names: mappings that complete, and that know what is near a wrong name."""

from __future__ import annotations

import difflib
from typing import Generic, Iterable, Iterator, Mapping, TypeVar

from zuma.errors import NoSuchName

T = TypeVar("T")


class Named(Mapping[str, T], Generic[T]):
    """Objects by label, in the order of the frame.

    An object without a label stands under the name of its row. The name of a row finds an object
    with a label, too, where no label is spelt that way. Names that are Python identifiers are
    attributes as well: ``frame.sensors.Force``.
    """

    def __init__(self, kind: str, entries: Iterable[tuple[str, str, T]]) -> None:
        self._kind = kind
        self._by_label: dict[str, T] = {}
        self._by_name: dict[str, T] = {}
        for label, name, thing in entries:
            self._by_label.setdefault(label or name, thing)
            self._by_name.setdefault(name, thing)

    def __getitem__(self, name: str) -> T:
        if name in self._by_label:
            return self._by_label[name]
        if name in self._by_name:
            return self._by_name[name]
        raise NoSuchName(self.refusal(name))

    def __getattr__(self, name: str) -> T:
        if name.startswith("_"):
            raise AttributeError(name)
        try:
            return self[name]
        except NoSuchName as error:
            raise AttributeError(str(error)) from None

    def __iter__(self) -> Iterator[str]:
        return iter(self._by_label)

    def __len__(self) -> int:
        return len(self._by_label)

    def __dir__(self) -> list[str]:
        return [*super().__dir__(), *(name for name in self if name.isidentifier())]

    def _ipython_key_completions_(self) -> list[str]:
        return list(self)

    def __repr__(self) -> str:
        lines = "".join(f"\n  {thing!r}" for thing in self.values())
        return f"{len(self)} {self._kind}s:{lines}"

    def refusal(self, name: str) -> str:
        """What there is to say of a name that is not there: the nearest ones, else all."""
        folded = {known.casefold(): known for known in [*self._by_name, *self._by_label]}
        near = difflib.get_close_matches(str(name).casefold(), folded, n=3, cutoff=0.5)
        hint = (
            "did you mean " + ", ".join(f'"{folded[match]}"' for match in near) + "?"
            if near
            else "there are: " + ", ".join(f'"{known}"' for known in self)
        )
        return f'no {self._kind} "{name}" in this frame; {hint}'
