"""Conan 2 recipe; it packages the source tree that it stands in:  conan create packaging/conan

The tree has no licence and no home on the network yet; `license`, `url` and `homepage` are to be filled in with them.
"""

import os
import re

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.cmake import CMake, CMakeToolchain
from conan.tools.files import copy, load, rmdir


class KvalConan(ConanFile):
    name = "kval"
    description = "Four-state integer values of any bit width"
    topics = ("hardware", "simulation", "four-state", "verilog", "integer")
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"

    @property
    def _tree(self):
        return os.path.join(self.recipe_folder, os.pardir, os.pardir)

    def set_version(self):
        """The version stands in the header only."""
        header = load(self, os.path.join(self._tree, "include", "kval.h"))
        self.version = ".".join(re.findall(r"^#define KVAL_VERSION_(?:MAJOR|MINOR|PATCH) +(\d+)", header, re.MULTILINE))

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "cmake/*", "include/*", "src/*", "tools/gdb/*", "packaging/debian/copyright"):
            copy(self, pattern, self._tree, self.export_sources_folder)

    def validate(self):
        if self.settings.os != "Linux" or self.settings.arch not in ("x86_64", "armv8"):
            raise ConanInvalidConfiguration("kval runs on 64-bit Linux only")

    def layout(self):
        self.folders.root = os.path.join(os.pardir, os.pardir)
        self.folders.source = os.curdir
        self.folders.build = os.path.join("build", "conan")
        self.folders.generators = os.path.join("build", "conan", "generators")

    def generate(self):
        toolchain = CMakeToolchain(self)
        for option in ("KVAL_BUILD_TESTS", "KVAL_BUILD_EXAMPLES"):
            toolchain.cache_variables[option] = False
        toolchain.cache_variables["KVAL_INSTALL"] = True
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(
            self,
            "copyright",
            os.path.join(self.source_folder, "packaging", "debian"),
            os.path.join(self.package_folder, "licenses"),
        )
        # Conan writes both packages itself, for the profile of the consumer.
        for folder in ("cmake", "pkgconfig"):
            rmdir(self, os.path.join(self.package_folder, "lib", folder))

    def package_info(self):
        self.cpp_info.libs = ["kval"]
        self.cpp_info.set_property("cmake_file_name", "kval")
        self.cpp_info.set_property("cmake_target_name", "kval::kval")
        self.cpp_info.set_property("pkg_config_name", "kval")
