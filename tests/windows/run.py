"""Tries the library and the command for Windows under Wine, beside native ones whose outputs they
must give: run.py BUILD HOST INSTALLED WINE, with a native build, host.c built natively, an
installation for Windows with host.c in its bin, and the loader of Wine or "none"."""
import concurrent.futures
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import time

build, host, installed, wine = (os.path.abspath(a) if a != "none" else a for a in sys.argv[1:])
build, installed = pathlib.Path(build), pathlib.Path(installed)
directory = installed / "bin"
samples = pathlib.Path(__file__).resolve().parents[2] / "samples"
PROGRAMS = 200
EXE = [wine, str(directory / "scan695.exe")]
WINDOWS_HOST = [wine, str(directory / "host.exe")]
OBJECT = (samples / "c166.abs").read_bytes()
ENDED = 0x3A  # the low byte of the status of a process that an interrupt has ended


def run(command, folder):
    return subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True, timeout=60)


def contents(folder):
    return {p.name: p.read_bytes() for p in folder.rglob("*") if p.is_file()}


def expect(good, *what):
    if not good:
        sys.exit("windows: " + " ".join(str(part) for part in what))


def folder():
    return pathlib.Path(tempfile.mkdtemp(dir=scratch))


def tables():
    for name in ("scan695.dll", "scan695.exe"):
        text = run(["objdump", "-p", directory / name], scratch).stdout.decode()
        dlls = set(re.findall("DLL Name: (.*)", text)) - {"scan695.dll"}
        expect(dlls and dlls <= {"KERNEL32.dll", "msvcrt.dll", "SHELL32.dll"}, name, "needs", dlls)
        if name.endswith("dll"):
            names = re.findall(r"\[ +\d+\] (?:\+base\[ +\d+\] +[0-9a-f]+ )?([A-Za-z_@]\w*[@\d]*)$", text, re.M)
            expect(names == ["Check", "Convert"], "exports", names)
    for name in ("libscan695.dll.a", "scan695.def"):
        expect((installed / "lib" / name).exists(), name, "is missing")


def program(seed):
    for steps in ("p", "d") if seed % 10 else ("pd", "ddrp"):
        outputs = []
        for command in ([host, build / "libscan695.so"], WINDOWS_HOST + [directory / "scan695.dll"]):
            place = folder()
            run([build / "fuzz/differ", "--write", str(seed), "t.abs", samples], place)
            done = run(command + [steps], place)
            outputs.append((done.returncode, done.stdout, contents(place)))
        (status, console, files), (other_status, other_console, other_files) = outputs
        same = status in (0, 1) and other_status == status
        expect(same, seed, steps, status, other_status, console[-120:], other_console[-120:], done.stderr[-200:])
        same = other_console == console.replace(b"\n", b"\r\n")
        expect(same, seed, steps, "console", console[-120:], other_console[-120:], len(console), len(other_console))
        expect(other_files == files, seed, steps, files.keys(), other_files.keys())


def programs():
    """The console differs in its line ends alone: CR LF, as the C runtime writes text."""
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        list(pool.map(program, range(PROGRAMS)))


def command_cases():
    long = "/".join(["long" * 12] * 6)
    damaged = OBJECT[:3000]
    # Arguments; files that are there (closed.stf read-only); status; what standard error is; files that come.
    cases = (
        ("a.abs", {}, 0, "", "a.stf"),
        ("a.abs -o s.x --fst f.x --trace t.x", {}, 0, "", "s.x f.x t.x"),
        ("größe.abs 실.abs -j 2 -q --fst .", {}, 0, "", "größe.stf 실.stf GRößE.FST 실.FST"),
        (f"{long}/실.abs", {}, 0, "", f"{long}/실.stf"),
        ("sub\\a.abs -o sub\\b.stf", {}, 0, "", "sub/b.stf"),
        ("Z:{place}/a.abs -o z:{place}\\b.stf", {}, 0, "", "b.stf"),
        ("check 실.abs", {}, 0, "", ""),
        ("show 실.abs", {}, 0, "", ""),
        ("verify 실.abs", {}, 0, "", ""),
        ("missing.abs", {}, 1, "scan695: missing.abs: No such file or directory", ""),
        ("bad.abs", {"bad.stf": b"older"}, 1, "scan695: bad.abs: damaged at offset .*", ""),
        ("a.abs -o closed.stf", {"closed.stf": b"older"}, 1, "scan695: a.abs: cannot write closed.stf: .*denied", ""),
        ("a.abs -o Z:/sys/a.stf", {}, 1, "scan695: a.abs: cannot write Z:/sys/a.stf: .*", ""),
        ("con.abs", {}, 1, "scan695: con.abs: the name is kept for a device", ""),
        ("a.abs -o sub\\COM1.stf", {}, 1, r"scan695: a.abs: cannot write sub\\COM1.stf: the name .*", ""),
        ("--wrong", {}, 2, "scan695: .*", ""),
    )
    for arguments, older, status, error, new in cases:
        place = folder()
        for name in re.findall(r"\S+\.abs", arguments):
            if name.startswith(("missing", "con", "Z:")):
                name = "a.abs"
            path = place / name.replace("\\", "/")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(damaged if name == "bad.abs" else OBJECT)
        (place / "sub").mkdir(exist_ok=True)
        for name, text in older.items():
            (place / name).write_bytes(text)
            (place / name).chmod(0o444 if name == "closed.stf" else 0o644)
        before = contents(place)
        done = run(EXE + arguments.format(place=place).split(), place)
        said = done.stderr.decode().replace("\r\n", "\n")
        expect(done.returncode == status, arguments, done.returncode, said)
        expect(re.fullmatch(error + "\n" if error else "", said), arguments, said)
        after = contents(place)
        made = {name: after[name] for name in after if name not in before}
        expect(set(made) == {pathlib.Path(n).name for n in new.split()}, arguments, set(made))
        expect({name: after.get(name) for name in before} == before, arguments, "an older file")
        for name, bytes_ in made.items():
            kind = name.rsplit(".", 1)[1].lower()[0]
            kind = name[0] if kind == "x" else kind
            expect(bytes_ == native[kind if kind != "s" or "--fst" not in arguments else "d"], arguments, name)


def open_file():
    place = folder()
    (place / "a.abs").write_bytes(OBJECT)
    (place / "a.stf").write_bytes(b"older")
    holder = subprocess.Popen(WINDOWS_HOST + ["hold", "a.stf"], cwd=place, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    expect(holder.stdout.readline().strip() == b"held", "the holder")
    done = run(EXE + ["a.abs", "--fst", "A.FST"], place)
    expect(done.returncode == 1 and b"cannot write a.stf: Permission denied" in done.stderr, done)
    expect(contents(place) == {"a.abs": OBJECT, "a.stf": b"older"}, "open file", contents(place).keys())
    holder.communicate(b"\n")
    expect(run(EXE + ["a.abs"], place).returncode == 0 and contents(place)["a.stf"] == native["s"], "closed again")


def interrupt():
    """While standard input is awaited, and while a child cannot print."""
    for arguments in (["-", "-o", "o.stf"], ["big.abs", "-o", "o.stf", "--trace", "-"]):
        place = folder()
        (place / "big.abs").write_bytes(OBJECT)
        process = subprocess.Popen(EXE + arguments, cwd=place, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        until = time.monotonic() + 20
        while not list(place.glob(".scan695*/*")) and time.monotonic() < until:
            time.sleep(0.05)
        expect(list(place.glob(".scan695*/*")), "no folder to remove", arguments)
        time.sleep(0.5)
        process.send_signal(signal.SIGINT)
        process.wait(timeout=20)
        expect(process.returncode == ENDED, "interrupt", arguments, process.returncode)
        expect(os.listdir(place) == ["big.abs"], "interrupt", arguments, os.listdir(place))


with tempfile.TemporaryDirectory(dir=build) as scratch:
    (pathlib.Path(scratch) / "a.abs").write_bytes(OBJECT)
    run([build / "cli/scan695", "a.abs", "-o", "d", "--fst", "f.x", "--trace", "t"], scratch)
    run([build / "cli/scan695", "a.abs", "-o", "s"], scratch)
    native = {name.removesuffix(".x"): bytes_ for name, bytes_ in contents(pathlib.Path(scratch)).items()}
    tests = (tables, command_cases, open_file, interrupt, programs)
    for test in tests if wine != "none" else tests[:1]:
        start = time.monotonic()
        test()
        print(f"{test.__name__}: {time.monotonic() - start:.1f} s", flush=True)
