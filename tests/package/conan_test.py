"""Tests the Conan recipe in a stand-in for Conan, which copies, reads and configures for real but builds nothing: what
the recipe exports must be enough for CMake, and what it packages must be the installed tree.

ctest sets the environment: SOURCE and BUILD are the project's directories, WORK is a folder to work in, CMAKE and CXX
are the tools of its build.
"""

import fnmatch
import os
import pathlib
import re
import shutil
import subprocess
import sys
import types
import unittest

SOURCE = pathlib.Path(os.environ["SOURCE"])
BUILD = pathlib.Path(os.environ["BUILD"])
WORK = pathlib.Path(os.environ["WORK"])
RECIPES = SOURCE / "packaging/conan"


def cmake(*arguments):
    subprocess.run([os.environ["CMAKE"], *arguments], check=True, stdout=subprocess.DEVNULL)


class InvalidConfiguration(Exception):
    pass


class ConanFile:
    def __init__(self, recipe_folder, **settings):
        self.recipe_folder = str(recipe_folder)
        self.export_sources_folder = self.source_folder = str(WORK / "source")
        self.build_folder = str(WORK / "build")
        self.package_folder = str(WORK / "package")
        self.settings = types.SimpleNamespace(**{"os": "Linux", "arch": "x86_64", **settings})
        self.folders = types.SimpleNamespace()


class CMakeToolchain:
    def __init__(self, recipe):
        self.recipe = recipe
        self.cache_variables = {}

    def generate(self):
        self.recipe.variables = [f"-D{name}={'ON' if value else 'OFF'}" for name, value in self.cache_variables.items()]


class CMake:
    def __init__(self, recipe):
        self.recipe = recipe

    def configure(self):
        cmake("-S", self.recipe.source_folder, "-B", self.recipe.build_folder, "-G", "Ninja",
              f"-DCMAKE_CXX_COMPILER={os.environ['CXX']}", *self.recipe.variables)

    def build(self):
        pass

    def install(self):
        """Installs the build of the project instead: that of the recipe was not built."""
        cmake("--install", str(BUILD), "--prefix", self.recipe.package_folder)


def copy(recipe, pattern, src, dst):
    for path in pathlib.Path(src).rglob("*"):
        name = path.relative_to(src)
        if path.is_file() and fnmatch.fnmatch(str(name), pattern):
            (pathlib.Path(dst) / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(path, pathlib.Path(dst) / name)


def load_recipe(folder):
    """The recipe class of folder/conanfile.py, which finds the stand-ins where it looks for Conan."""
    modules = {
        "conan": {"ConanFile": ConanFile},
        "conan.errors": {"ConanInvalidConfiguration": InvalidConfiguration},
        "conan.tools": {},
        "conan.tools.build": {"can_run": lambda recipe: True},
        "conan.tools.cmake": {"CMake": CMake, "CMakeToolchain": CMakeToolchain, "cmake_layout": lambda recipe: None},
        "conan.tools.files": {"copy": copy, "load": lambda recipe, path: pathlib.Path(path).read_text(),
                              "rmdir": lambda recipe, path: shutil.rmtree(path, ignore_errors=True)},
    }
    for name, members in modules.items():
        sys.modules[name] = types.ModuleType(name)
        vars(sys.modules[name]).update(members)
    namespace = {"__name__": "conanfile"}
    exec(compile((folder / "conanfile.py").read_text(), folder / "conanfile.py", "exec"), namespace)
    return next(value for value in namespace.values()
                if isinstance(value, type) and issubclass(value, ConanFile) and value is not ConanFile)


class ConanTest(unittest.TestCase):
    def setUp(self):
        shutil.rmtree(WORK, ignore_errors=True)
        self.recipe = load_recipe(RECIPES)(RECIPES)

    def test_version_is_that_of_the_header(self):
        header = (SOURCE / "include/kval.h").read_text()
        numbers = [re.search(rf"KVAL_VERSION_{part} (\d+)", header)[1] for part in ("MAJOR", "MINOR", "PATCH")]
        self.recipe.set_version()
        self.assertEqual(self.recipe.version, ".".join(numbers))

    def test_exported_sources_are_enough_to_configure(self):
        self.recipe.export_sources()
        self.recipe.generate()
        self.recipe.build()
        cache = (WORK / "build/CMakeCache.txt").read_text()
        self.assertIn("KVAL_BUILD_TESTS:BOOL=OFF\n", cache)
        self.assertIn("KVAL_INSTALL:BOOL=ON\n", cache)
        for folder in ("include", "src"):
            exported = {path.relative_to(WORK / "source") for path in (WORK / "source" / folder).rglob("*")}
            there = {path.relative_to(SOURCE) for path in (SOURCE / folder).rglob("*")}
            self.assertEqual(exported, there)

    def test_layout_leads_to_the_root_of_the_tree(self):
        self.recipe.layout()
        root = (RECIPES / self.recipe.folders.root / self.recipe.folders.source).resolve()
        self.assertTrue((root / "CMakeLists.txt").samefile(SOURCE / "CMakeLists.txt"))

    def test_package_has_library_headers_and_copyright(self):
        self.recipe.export_sources()
        self.recipe.package()
        package = WORK / "package"
        for name in ("lib/libkval.so", "lib/libkval.so.2", "include/kval.h", "include/kval/detail/storage.h",
                     "licenses/copyright"):
            self.assertTrue((package / name).is_file(), name)
        self.assertFalse((package / "lib/cmake").exists() or (package / "lib/pkgconfig").exists())

    def test_package_is_for_64_bit_linux_only(self):
        self.recipe.validate()
        load_recipe(RECIPES)(RECIPES, arch="armv8").validate()
        for settings in ({"arch": "x86"}, {"os": "Windows"}):
            with self.assertRaises(InvalidConfiguration):
                load_recipe(RECIPES)(RECIPES, **settings).validate()

    def test_test_package_builds_a_program_that_is_there(self):
        recipe = load_recipe(RECIPES / "test_package")(RECIPES / "test_package")
        configured, run = [], []
        sys.modules["conan.tools.cmake"].CMake.configure = lambda self, build_script_folder: configured.append(
            build_script_folder)
        recipe.cpp = types.SimpleNamespace(build=types.SimpleNamespace(bindir="."))
        recipe.run = lambda command, env: run.append(pathlib.Path(command).name)
        recipe.build()
        recipe.test()
        text = (pathlib.Path(configured[0]) / "CMakeLists.txt").read_text()
        self.assertIn(f"add_executable({run[0]} ", text)


if __name__ == "__main__":
    unittest.main()
