"""Builds the extension module and what ships with it by the project's own CMake (pyproject.toml)."""
import os
import pathlib
import re
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

root = pathlib.Path(__file__).parent.resolve()


class BuildByCMake(build_ext):
    def build_extension(self, extension):
        package = pathlib.Path(self.get_ext_fullpath(extension.name)).resolve().parent
        build = os.environ.get("TOOL_BUILD")  # one that is there already
        if not build:
            build = pathlib.Path(self.build_temp).resolve()
            subprocess.run(["cmake", "-S", root, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                            "-DTOOL_TESTS=OFF", f"-DPython_EXECUTABLE={sys.executable}"], check=True)
        subprocess.run(["cmake", "--build", build, "--target", "python_package"], check=True)
        subprocess.run(["cmake", "--install", build, "--component", "wheel", "--prefix", package.parent], check=True)


version = re.search(r"project\(Tool VERSION ([\d.]+)", (root / "CMakeLists.txt").read_text())[1]
setup(version=version, ext_modules=[Extension("cephtool._engine", [])], cmdclass={"build_ext": BuildByCMake})
