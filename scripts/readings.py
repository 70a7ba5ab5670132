"""What the sources include, and which of them passed a check as they are: a check reads only the others."""
import hashlib
import re
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+(?:"([^"]+)"|<([^>]+)>)', re.M)


class Includes:
    """What a file includes, in the project and beyond, at any depth; `places` are searched in turn."""

    def __init__(self, places):
        self._places = places
        self._texts = {}

    def text(self, path):
        if path not in self._texts:
            self._texts[path] = path.read_text(encoding="utf-8")
        return self._texts[path]

    def reach(self, path, files=None, library=None):
        """The project's files that `path` reads, itself too, and the names of the library's headers."""
        files = {} if files is None else files
        library = set() if library is None else library
        if path not in files:
            files[path] = None
            for quoted, angled in INCLUDE.findall(self.text(path)):
                name = quoted or angled
                found = [place / name for place in self._places if (place / name).is_file()]
                if found:
                    self.reach(found[0], files, library)
                else:
                    library.add(name)
        return files, library


class Passed:
    """Marks in `folder` for sources that passed; `common` is what every result depends on besides the texts."""

    def __init__(self, folder, includes, common):
        folder.mkdir(parents=True, exist_ok=True)
        self._folder = folder
        self._includes = includes
        self._common = common

    def __contains__(self, path):
        return self._mark(path).exists()

    def add(self, path):
        for old in self._folder.glob(self._name(path) + ".*"):
            old.unlink()
        self._mark(path).touch()

    def _name(self, path):
        return path.relative_to(ROOT).as_posix().replace("/", "+")

    def _mark(self, path):
        files = self._includes.reach(path)[0]
        digest = hashlib.sha256(self._common.encode())
        for file in sorted(files):
            digest.update(f"{file.relative_to(ROOT)}\n{self._includes.text(file)}".encode())
        return self._folder / (self._name(path) + "." + digest.hexdigest())
