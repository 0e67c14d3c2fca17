"""Builds the Python package: /usr/bin/python3 -m pip wheel . --no-build-isolation --no-deps

The wheel has all libraries that the package needs. With ZKMOCAP_BUILD_DIR in the environment, the libraries are those of
that build folder, and nothing is compiled.
"""

import os
import pathlib
import re

from skbuild import setup

ROOT = pathlib.Path(__file__).parent
VERSION = re.search(r"project\(zkmocaputils VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text("utf-8"))[1]
BUILT = os.environ.get("ZKMOCAP_BUILD_DIR")

if BUILT:
    source, arguments = "python/built", ["-DZKMOCAP_BUILD_DIR=" + os.path.abspath(BUILT)]
else:
    source = "."
    arguments = ["-DZKMOCAP_PYTHON_PACKAGE=ON", "-DCMAKE_BUILD_TYPE=Release"]

setup(
    name="zkmocaputils",
    version=VERSION,
    description="Motion-capture takes as NumPy arrays, and arrays as motion-capture files",
    long_description=(ROOT / "docs" / "python.md").read_text("utf-8"),
    long_description_content_type="text/markdown",
    python_requires=">=3.11",
    install_requires=["numpy"],
    packages=["zkmocaputils"],
    package_dir={"": "python"},
    package_data={"zkmocaputils": ["py.typed", "*.pyi"]},
    cmake_source_dir=source,
    cmake_args=arguments,
    cmake_install_dir="python",
    zip_safe=False,
)
