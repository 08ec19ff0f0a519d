"""Builds the package from the installed headers and shared library of ZephlinkSDK.

pkg-config finds them; without pkg-config, CPPFLAGS and LDFLAGS must.
"""

import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext
from setuptools.command.build_py import build_py

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))

from build_steps import headers, native, python  # noqa: E402

CXX_SOURCES = ("box.cpp", "link.cpp")


def version():
    """Returns the library's version, or the source tree's if pkg-config does not know the library."""
    return (headers.pkg_config("--modversion") or ["0"])[0]


class BuildModules(build_py):
    """Adds the generated modules to those of the source tree."""

    def run(self):
        super().run()
        package = Path(self.build_lib, "zephlink")
        for name, text in python.modules(headers.read()).items():
            (package / name).write_text(text, encoding="utf-8")


class BuildExtension(build_ext):
    """Generates the sources. Passes separate options for C++, which setuptools does not support."""

    def build_extension(self, extension):
        declared = headers.read()
        generated = Path(self.build_temp, "generated")
        generated.mkdir(parents=True, exist_ok=True)
        (generated / "methods.cpp").write_text(native.source(declared), encoding="utf-8")
        native.write_module(declared, generated / "_native.c")

        sources = [str(HERE / "native" / name) for name in CXX_SOURCES] + [str(generated / "methods.cpp")]
        extension.extra_objects += self.compiler.compile(
            sources, output_dir=self.build_temp, include_dirs=extension.include_dirs,
            extra_postargs=[*extension.extra_compile_args, "-std=c++20", "-fvisibility=hidden"])
        extension.sources = [str(generated / "_native.c")]
        super().build_extension(extension)


extension = Extension(
    "zephlink._native",
    sources=[],
    include_dirs=[str(HERE / "native")],
    extra_compile_args=[*headers.compiler_options(), "-Wall", "-Wextra"],
    extra_link_args=headers.pkg_config("--libs") or ["-lzephlinksdk"],
    define_macros=[("Py_LIMITED_API", "0x03090000")],
    py_limited_api=True,
    language="c++",
)

setup(
    version=version(),
    packages=["zephlink"],
    package_data={"zephlink": ["py.typed", "*.pyi"]},
    ext_modules=[extension],
    cmdclass={"build_py": BuildModules, "build_ext": BuildExtension},
    options={"bdist_wheel": {"py_limited_api": "cp39"}},
)
