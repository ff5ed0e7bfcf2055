"""Installs the build into a folder of its own and uses it as somebody else would: every installed header compiles
alone, programs in C++ and C are built against the installed tree only and run, and the libraries export what they should.
"""

import argparse
import concurrent.futures
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

findings = []


def run(*command, **options):
    outcome = subprocess.run([str(word) for word in command], capture_output=True, text=True, **options)
    if outcome.returncode:
        findings.append(f"{command[0]} failed:\n{outcome.stdout}{outcome.stderr}")
    return outcome.stdout


def headers_of(prefix):
    root = prefix / "include" / "zanbench"
    return root, sorted(root.rglob("*.h"))


def check_headers_alone(prefix, options):
    """The flags come from the package, through a target of the outside project."""
    root, headers = headers_of(prefix)
    wide = ["-fPIC", "-std=c++20", f"-I{root}", *options.toolkit]

    def compile_alone(header):
        name = header.relative_to(root)
        target = options.work / "alone" / (str(name).replace("/", "_") + ".cpp")
        target.write_text(f'#include "{name}"\n#include "{name}"\n')
        command = [*options.launcher.split(), options.cxx, *wide, "-c", target, "-o", target.with_suffix(".o")]
        outcome = subprocess.run([str(word) for word in command], capture_output=True, text=True)
        if outcome.returncode:
            findings.append(f"{name} does not compile alone:\n{outcome.stderr[:2000]}")

    (options.work / "alone").mkdir(parents=True, exist_ok=True)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        list(pool.map(compile_alone, headers))
    return len(headers)


def check_umbrellas(prefix):
    root, headers = headers_of(prefix)
    above = {path.name for path in headers if path.parent == root}
    wanted = {"ZanCore.h", "ZanScript.h", "ZanHistory.h", "ZanData100.h", "Trellis2.h", "Halyard2.h",
              "ZanBenchWindow.h", "ZanBenchComponent.h"}
    if not wanted <= above:
        findings.append(f"umbrella headers are missing: {sorted(wanted - above)}")
    installed = {str(path.relative_to(root)) for path in headers}
    for private in ("window/PanelEditor.h", "component/Handles.h", "script/machine/Vm.h", "dialogs/SetupForm.h"):
        if private in installed:
            findings.append(f"{private} is nobody else's and was installed")


def check_exports(prefix):
    """Every library has its version in its name and exports nothing but our own."""
    for library in sorted((prefix / "lib").glob("**/libZan*.so")) + [prefix / "lib/libTrellis2.so",
                                                                     prefix / "lib/libHalyard2.so"]:
        name = run("readelf", "-dW", library)
        if not re.search(r"SONAME.*\.so\.\d+\]", name):
            findings.append(f"{library.name} has no version in its name")
        # Everything that is defined and that other libraries can see.
        for line in run("nm", "-D", "--defined-only", "-C", library).splitlines():
            symbol = line.split(" ", 2)[-1]
            ours = "zan" in symbol or symbol.startswith("Dll")
            if not ours and not symbol.startswith(("_init", "_fini", "__asan", "__ubsan", "__odr_asan")):
                findings.append(f"{library.name} exports {symbol}")
                break


def check_programs(prefix, options):
    build = options.work / "outside"
    run(options.cmake, "-S", options.sources / "tests/install/outside", "-B", build, "-G", "Ninja",
        f"-DCMAKE_PREFIX_PATH={prefix}", f"-DEXAMPLES={options.sources / 'examples'}", "-DCMAKE_BUILD_TYPE=Debug",
        f"-DCMAKE_CXX_COMPILER={options.cxx}", f"-DCMAKE_C_COMPILER={options.cc}",
        f"-DCMAKE_CXX_COMPILER_LAUNCHER={options.launcher}", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
        f"-DCMAKE_CXX_FLAGS={options.flags}", f"-DCMAKE_C_FLAGS={options.flags}")
    run(options.cmake, "--build", build)
    commands = (build / "compile_commands.json").read_text() if not findings else ""
    if str(options.sources / "src") in commands:
        findings.append("the program outside was compiled with headers of the source tree")
    options.toolkit = sorted(set(re.findall(r"-isystem (/\S*[qQ]t6?\S*)", commands)))
    options.toolkit = [word for folder in options.toolkit for word in ("-isystem", folder)]
    return build


def check_run(build, options):
    out = run(build / "panel_in_c", options.sources / "examples/weir.scheme", "Overview")
    if "nothing is left" not in out:
        findings.append(f"the program in C said: {out}")
    loaded = run("ldd", build / "panel_in_c")
    if str(options.build / "lib") in loaded:
        findings.append("the program outside runs with libraries of the build folder")


def main():
    parser = argparse.ArgumentParser()
    for name in ("build", "sources"):
        parser.add_argument(f"--{name}", type=lambda path: Path(path).resolve(), required=True)
    for name in ("cxx", "cc", "cmake", "flags", "launcher"):
        parser.add_argument(f"--{name}", default="")
    options = parser.parse_args()
    options.work = options.build / "installed"
    shutil.rmtree(options.work, ignore_errors=True)
    prefix = options.work / "prefix"
    run(options.cmake, "--install", options.build, "--prefix", prefix)
    count = 0
    if not findings:
        check_umbrellas(prefix)
        check_exports(prefix)
        build = check_programs(prefix, options)
    if not findings:
        count = check_headers_alone(prefix, options)
        check_run(build, options)
    shutil.rmtree(options.work, ignore_errors=True)
    for finding in findings:
        print(finding, file=sys.stderr)
    print(f"install: {count} headers compiled alone, {len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
