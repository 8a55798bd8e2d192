"""Builds and runs tests/consumer/outside against the package, when `conan create` has made it."""

import os

from conan import ConanFile
from conan.tools.build import can_run
from conan.tools.cmake import CMake, cmake_layout


class KvalTestConan(ConanFile):
    settings = "os", "arch", "compiler", "build_type"
    generators = "CMakeDeps", "CMakeToolchain"

    def requirements(self):
        self.requires(self.tested_reference_str)

    def layout(self):
        cmake_layout(self)

    def build(self):
        outside = os.path.join(self.recipe_folder, *[os.pardir] * 3, "tests", "consumer", "outside")
        cmake = CMake(self)
        cmake.configure(build_script_folder=outside)
        cmake.build()

    def test(self):
        if can_run(self):
            self.run(os.path.join(self.cpp.build.bindir, "outside"), env="conanrun")
