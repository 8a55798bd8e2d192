"""Tests that whatever tells a version tells that of include/kval.h.

ctest sets the environment: SOURCE and BUILD are the project's directories.
"""

import json
import os
import pathlib
import re
import unittest

SOURCE = pathlib.Path(os.environ["SOURCE"])
BUILD = pathlib.Path(os.environ["BUILD"])


def header_version():
    header = (SOURCE / "include/kval.h").read_text()
    return ".".join(re.search(rf"^#define KVAL_VERSION_{part} (\d+)$", header, re.MULTILINE)[1]
                    for part in ("MAJOR", "MINOR", "PATCH"))


class VersionTest(unittest.TestCase):
    def test_vcpkg_port(self):
        port = json.loads((SOURCE / "packaging/vcpkg/ports/kval/vcpkg.json").read_text())
        self.assertEqual(port["version"], header_version())

    def test_pkg_config_file(self):
        self.assertIn(f"Version: {header_version()}\n", (BUILD / "kval.pc").read_text())

    def test_cmake_package(self):
        self.assertIn(f'set(PACKAGE_VERSION "{header_version()}")', (BUILD / "kvalConfigVersion.cmake").read_text())

    def test_minor_version_in_what_users_copy(self):
        minor_version = header_version().rpartition(".")[0]
        for name in ("README.md", "docs/linking.md", "packaging/vcpkg/ports/kval/usage"):
            asked_for = re.findall(r"find_package\(kval ([0-9.]+)", (SOURCE / name).read_text())
            self.assertTrue(asked_for, name)
            self.assertEqual(set(asked_for), {minor_version}, name)

    def test_version_in_the_page_on_linking(self):
        page = (SOURCE / "docs/linking.md").read_text()
        self.assertEqual(set(re.findall(r'"kval/([0-9.]+)"', page)), {header_version()})
        self.assertEqual(set(re.findall(r"libkval\.so\.2\.([0-9.]+)", page)), {header_version()})

    def test_no_other_file_of_the_recipes_has_a_version_of_its_own(self):
        for path in (SOURCE / "packaging").rglob("*"):
            if path.is_file() and path.suffix != ".pyc" and path.name != "vcpkg.json":
                self.assertNotIn(header_version(), path.read_text(), path)


if __name__ == "__main__":
    unittest.main()
