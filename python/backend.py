"""Builds the wheel and the source distribution (PEP 517), with CMake and nothing else.

    pip wheel . --no-deps
    pip wheel . --no-deps --config-settings package=build/release/python/tlvmsg      # of what is built already
    pip wheel . --no-deps --config-settings build=build/wheel                        # keeps what it builds
"""
import base64
import hashlib
import os
import platform
import re
import subprocess
import sys
import tarfile
import tempfile
import zipfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
ENTRY_POINTS = "[pytest11]\ntlvmsg = tlvmsg.pytest_plugin\n"


def read(*path):
    with open(os.path.join(ROOT, *path), encoding="utf-8") as file:
        return file.read()


def version():
    header = read("include", "tlvmsg", "version.h")
    return ".".join(re.findall(r"^#define TLVMSG_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", header, re.M))


def metadata():
    return (f"Metadata-Version: 2.1\nName: tlvmsg\nVersion: {version()}\n"
            "Summary: Messages of a router's control plane as TLV bytes and as objects\n"
            "Requires-Python: >=3.11\nDescription-Content-Type: text/markdown\n\n" + read("docs", "python.md"))


def built_package(directory):
    options = ["-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_C_FLAGS_RELEASE=-O2", "-DCMAKE_CXX_FLAGS_RELEASE=-O2", "-DBUILD_SHARED_LIBS=OFF", "-DBUILD_TESTING=OFF", "-DTLVMSG_TOOLS=OFF",
               "-DTLVMSG_INSTALL=OFF", "-DTLVMSG_PYTHON=ON", *os.environ.get("TLVMSG_CMAKE_OPTIONS", "").split()]
    subprocess.run(["cmake", "-S", ROOT, "-B", directory, *options], check=True)
    build = ["cmake", "--build", directory, "-j", str(os.cpu_count()), "--target", "tlvmsg_python_package"]
    subprocess.run(build, check=True)
    return os.path.join(directory, "python", "tlvmsg")


def wheel_tag(module):
    """By the newest version of the C library that the module needs."""
    needs = subprocess.run(["objdump", "-T", module], check=True, capture_output=True, text=True).stdout
    newest = max(int(minor) for minor in re.findall(r"GLIBC_2\.(\d+)", needs))
    return f"cp311-abi3-manylinux_2_{newest}_{platform.machine()}"


class Wheel:
    def __init__(self, path):
        self.archive, self.record = zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED), []

    def add(self, name, content):
        info = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))  # the same sources give the same wheel
        info.external_attr = (0o755 if name.endswith(".so") else 0o644) << 16
        info.compress_type = zipfile.ZIP_DEFLATED
        self.archive.writestr(info, content)
        digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).decode().rstrip("=")
        self.record.append(f"{name},sha256={digest},{len(content)}\n")

    def close(self, directory):
        record = "".join(self.record) + f"{directory}/RECORD,,\n"
        self.archive.writestr(zipfile.ZipInfo(f"{directory}/RECORD", (1980, 1, 1, 0, 0, 0)), record)
        self.archive.close()


def package_files(package):
    for directory, names, files in sorted(os.walk(package, followlinks=True)):
        for name in sorted(files):
            path = os.path.join(directory, name)
            if "__pycache__" not in path:
                yield path, "tlvmsg/" + os.path.relpath(path, package)


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    name = f"tlvmsg-{version()}.dist-info"
    os.makedirs(os.path.join(metadata_directory, name), exist_ok=True)
    for what, content in (("METADATA", metadata()), ("entry_points.txt", ENTRY_POINTS)):
        with open(os.path.join(metadata_directory, name, what), "w", encoding="utf-8") as file:
            file.write(content)
    return name


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    settings = config_settings or {}
    with tempfile.TemporaryDirectory() as scratch:
        package = settings.get("package") or built_package(settings.get("build") or scratch)
        stripped = os.path.join(scratch, "stripped.so")
        subprocess.run(["strip", "-o", stripped, os.path.join(package, "_native.abi3.so")], check=True)
        tag = wheel_tag(stripped)
        name, information = f"tlvmsg-{version()}-{tag}.whl", f"tlvmsg-{version()}.dist-info"
        wheel = Wheel(os.path.join(wheel_directory, name))
        for path, inside in package_files(package):
            with open(stripped if path.endswith(".so") else path, "rb") as file:
                wheel.add(inside, file.read())
        about = f"Wheel-Version: 1.0\nGenerator: tlvmsg\nRoot-Is-Purelib: false\nTag: {tag}\n"
        for what, content in (("METADATA", metadata()), ("WHEEL", about), ("entry_points.txt", ENTRY_POINTS),
                              ("LICENSE", read("LICENSE"))):
            wheel.add(f"{information}/{what}", content.encode())
        wheel.close(information)
    return name


def build_sdist(sdist_directory, config_settings=None):
    """What is under version control."""
    base = f"tlvmsg-{version()}"
    tracked = subprocess.run(["git", "ls-files", "-z"], cwd=ROOT, check=True, capture_output=True, text=True).stdout
    with tempfile.TemporaryDirectory() as scratch, tarfile.open(
            os.path.join(sdist_directory, base + ".tar.gz"), "w:gz", format=tarfile.PAX_FORMAT) as archive:
        for name in filter(None, tracked.split("\0")):
            if not name.startswith("tests/"):
                archive.add(os.path.join(ROOT, name), f"{base}/{name}")
        information = os.path.join(scratch, "PKG-INFO")
        with open(information, "w", encoding="utf-8") as file:
            file.write(metadata())
        archive.add(information, f"{base}/PKG-INFO")
    return base + ".tar.gz"


if __name__ == "__main__":  # for CMake: what an installed package is known by
    prepare_metadata_for_build_wheel(*sys.argv[1:])
