"""libolh for Python: the entry points of olh/olh.h in one file over ctypes, to be copied beside a program."""
import ctypes
import os
from enum import IntEnum
from typing import Optional, Union

Name = Union[str, bytes, "os.PathLike[str]"]


class Result(IntEnum):
    """What a call came to, with a sentence that can be shown to the user of the program."""
    OK = 0, "Done."
    FAILED = 2, "The program that shows the documentation did not open it."
    INVALID = 3, "No document was named."
    NOT_FOUND = 4, "The documentation was not found. Perhaps it is not installed."
    IO = 5, "The PDF reader did not open the documentation, or a setting could not be stored."
    NO_TOPIC = 6, "The documentation has no such topic."
    NO_PROGRAM = 7, "There is no program that could show the documentation."

    message: str

    def __new__(cls, code: int, message: str = "") -> "Result":
        result = int.__new__(cls, code)
        result._value_, result.message = code, message
        return result


class Viewer(IntEnum):
    PORTAL, CONFIGURED, PDF, HTML = -2, -1, 0, 1


class Display(IntEnum):
    NORMAL, TOPIC, POPUP = 0, 1, 2


_library = ctypes.CDLL("libolh.so.4")
_library.OlhVersion.restype = ctypes.c_char_p


def _call(function: str, *arguments: Union[int, Name]) -> Result:
    # Text that holds a NUL would be cut in C: it is refused here.
    words = [a if isinstance(a, int) else os.fsencode(a) for a in arguments]
    if any(isinstance(word, bytes) and b"\0" in word for word in words):
        return Result.INVALID
    return Result(getattr(_library, function)(*words))


def _text(function: str, *arguments: int) -> Optional[str]:
    buffer = ctypes.create_string_buffer(4096)
    done = getattr(_library, function)(*arguments, buffer) == Result.OK
    return os.fsdecode(buffer.value) if done else None


def show(document: Name, topic: Name = "", display: Display = Display.NORMAL) -> Result:
    return _call("OlhHelpCall", document, topic, display)
def test(document: Name, topic: Name = "") -> Result:
    return _call("OlhHelpTest", document, topic)
def portal(name: Name = "", tab: Name = "") -> Result:
    return _call("OlhTomeDeck", name, tab)
def bookcase(name: Name = "", destination: Name = "") -> Result:
    return _call("OlhBookcase", name, destination)
def search(query: Name, scope: Name = "") -> Result:
    return _call("OlhSearch", query, scope)
def set_viewer_order(order: str) -> Result:
    return _call("OlhSetViewerOrder", order)
def viewer_path(viewer: Viewer) -> Optional[str]:
    return _text("OlhGetViewerPath", viewer)
def set_viewer_path(viewer: Viewer, program: Name) -> Result:
    return _call("OlhSetViewerPath", viewer, program)
def set_doc_path(roots: Name) -> Result:
    return _call("OlhSetDocPath", roots)
def doc_path() -> Optional[str]:
    return _text("OlhGetDocPath")
def version() -> str:
    return str(_library.OlhVersion(), "ascii")
