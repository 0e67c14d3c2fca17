"""Motion-capture takes as NumPy arrays, and arrays as motion-capture files.

    import zkmocaputils as zm

    take = zm.read("walk.bvh")
    take.positions          # (frames, joints, 3), in the world
    take.write("walk.glb")

docs/python.md of the project explains all of it.
"""

from ._core import version as __version__
from ._errors import ReadError, ReadWarning, WorkerError
from ._many import read_many
from ._reading import check, read
from ._records import CheckResult, Facts, Finding
from ._rotations import from_6d, to_6d
from ._sources import find
from ._take import Take

__all__ = ["CheckResult", "Facts", "Finding", "ReadError", "ReadWarning", "Take", "WorkerError", "__version__", "check",
           "find", "from_6d", "read", "read_many", "to_6d"]
