"""Tries the library and the command for Windows under Wine, beside native ones whose outputs they
must give: run.py BUILD INSTALLED WINE PROGRAMS, with a native build (host.c in it as `host`), an
installation for Windows (host.exe in its bin), the loader of Wine or "none" where the tables of the
files are all that can be read, and how many programs made at random are converted."""
import concurrent.futures
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

build, installed = (pathlib.Path(a).resolve() for a in sys.argv[1:3])
wine, program_count = sys.argv[3], int(sys.argv[4])
directory = installed / "bin"
samples = pathlib.Path(__file__).resolve().parents[2] / "samples"
COMMAND = [wine, directory / "scan695.exe"]
NATIVE_HOST = [build / "host", build / "libscan695.so"]
HOST = [wine, directory / "host.exe"]
DLL = directory / "scan695.dll"
OBJECT = (samples / "c166.abs").read_bytes()
ENDED = 0x3A  # the low byte of the status of a process that an interrupt has ended
DEVICE = "the name is kept for a device"


def run(command, place):
    return subprocess.run(command, cwd=place, stdin=subprocess.DEVNULL, capture_output=True, timeout=120)


def contents(place):
    return {p.name: p.read_bytes() for p in place.rglob("*") if p.is_file()}


def expect(good, *what):
    if not good:
        sys.exit("windows: " + " ".join(str(part) for part in what))


def folder(**files):
    place = pathlib.Path(tempfile.mkdtemp(dir=scratch))
    for name, data in files.items():
        (place / name.replace("_", ".")).write_bytes(data)
    return place


def tables():
    """System libraries alone are needed; two names are exported; no thread is told of."""
    for name in ("scan695.dll", "scan695.exe"):
        text = run(["objdump", "-p", directory / name], scratch).stdout.decode()
        dlls = set(re.findall("DLL Name: (.*)", text)) - {"scan695.dll"}
        expect(dlls and dlls <= {"KERNEL32.dll", "msvcrt.dll", "SHELL32.dll"}, name, "needs", dlls)
        if name == DLL.name:
            names = re.findall(r"\[ +\d+\] (?:\+base\[ +\d+\] +[0-9a-f]+ )?([A-Za-z_@]\w*[@\d]*)$", text, re.M)
            expect(names == ["Check", "Convert"], "exports", names)
            expect(re.search(r"Entry 9 0+ 0+ Thread", text), "callbacks for threads")
    expect((installed / "lib/scan695.def").read_text().split() == ["EXPORTS", "Check", "Convert"], "scan695.def")


def import_library():
    """example.exe is linked with it."""
    place = folder(t_abs=OBJECT)
    shutil.copy(DLL, place)
    shutil.copy(directory / "example.exe", place)
    expect(run([wine, "example.exe", "t.abs", "t.stf"], place).returncode == 0, "example.exe")
    expect((place / "t.stf").read_bytes() == native["stf"], "example.exe: t.stf")


def command_cases():
    long = "/".join(["long" * 12] * 6)
    denied = "scan695: a.abs: cannot write closed.stf: .*denied\n"
    # Arguments; status; standard error; files that come. An older bad.stf and closed.stf, which is
    # read-only, are there and stay.
    cases = (
        ("a.abs", 0, "", "a.stf"),
        ("a.abs -o s.dstf --fst f.fst --trace t.trace", 0, "", "s.dstf f.fst t.trace"),
        ("größe.abs 실.abs -j 2 -q --fst .", 0, "", "größe.stf 실.stf GRößE.FST 실.FST"),
        (f"{long}/실.abs", 0, "", f"{long}/실.stf"),
        ("sub\\a.abs -o sub\\b.stf", 0, "", "sub/b.stf"),
        ("Z:{place}/a.abs -o z:{place}\\b.stf", 0, "", "b.stf"),
        ("check 실.abs", 0, "", ""),
        ("show 실.abs", 0, "", ""),
        ("missing.abs", 1, "scan695: missing.abs: No such file or directory\n", ""),
        ("bad.abs", 1, "scan695: bad.abs: damaged at offset .*\n", ""),
        ("a.abs -o closed.stf", 1, denied, ""),
        ("a.abs -o Z:/sys/a.stf", 1, "scan695: a.abs: cannot write Z:/sys/a.stf: .*\n", ""),
        ("con.abs nul aux.abs sub\\Lpt9.x", 1, f"(scan695: [a-z9.\\\\L]*: {DEVICE}\n){{4}}", ""),
        ("a.abs -o sub\\COM1.stf", 1, rf"scan695: a.abs: cannot write sub\\COM1.stf: {DEVICE}\n", ""),
        ("a.abs --trace prn", 1, f"scan695: a.abs: cannot write prn: {DEVICE}\n", ""),
        ("--wrong", 2, "scan695: .*\n", ""),
    )
    for arguments, status, error, new in cases:
        place = folder(a_abs=OBJECT, bad_abs=OBJECT[:3000], bad_stf=b"older", closed_stf=b"older")
        (place / "closed.stf").chmod(0o444)
        for name in ("größe.abs", "실.abs", "sub/a.abs", f"{long}/실.abs"):
            (place / name).parent.mkdir(parents=True, exist_ok=True)
            (place / name).write_bytes(OBJECT)
        before = {p: p.read_bytes() for p in place.rglob("*") if p.is_file()}
        done = run(COMMAND + arguments.format(place=place).split(), place)
        said = done.stderr.decode().replace("\r\n", "\n")
        expect(done.returncode == status and re.fullmatch(error, said), arguments, done.returncode, said)
        after = {p: p.read_bytes() for p in place.rglob("*") if p.is_file()}
        want = {place / name: native[name.rsplit(".", 1)[1].lower()] for name in new.split()}
        if "--fst" in arguments:
            want = {p: native["dstf"] if p.suffix == ".stf" else data for p, data in want.items()}
        expect(after == before | want, arguments, [p for p in after if after[p] != (before | want).get(p)])


def open_file():
    place = folder(t_abs=OBJECT, t_stf=b"older")
    with subprocess.Popen(HOST + ["hold", "t.stf"], cwd=place, stdin=-1, stdout=-1) as holder:
        expect(holder.stdout.readline().strip() == b"held", "the holder")
        done = run(COMMAND + ["t.abs", "--fst", "T.FST"], place)
        expect(done.returncode == 1 and b"cannot write t.stf: Permission denied" in done.stderr, done)
        done = run(HOST + [DLL, "d"], place)
        expect(done.returncode == 1 and b"Error: cannot open output file" in done.stdout, done)
        expect(contents(place) == {"t.abs": OBJECT, "t.stf": b"older"}, "open file", contents(place).keys())
        holder.communicate(b"\n")
    expect(run(COMMAND + ["t.abs"], place).returncode == 0, "closed again")


def interrupt():
    """While standard input is awaited, and while nobody reads the trace."""
    for arguments in (["-", "-o", "o.stf"], ["big.abs", "-o", "o.stf", "--trace", "-"]):
        place = folder(big_abs=OBJECT)
        process = subprocess.Popen(COMMAND + arguments, cwd=place, stdin=-1, stdout=-1, pipesize=4096)
        until = time.monotonic() + 20
        while not list(place.glob(".scan695*/*")) and time.monotonic() < until:
            time.sleep(0.05)
        expect(list(place.glob(".scan695*/*")), "no folder to remove", arguments)
        time.sleep(0.5)
        process.send_signal(signal.SIGINT)
        expect(process.wait(20) == ENDED, "interrupt", arguments, process.returncode)
        expect(os.listdir(place) == ["big.abs"], "interrupt", arguments, os.listdir(place))


def loads():
    """Far from the 1,088 slots that a process has, but a slot or a page for each load would show."""
    done = run(HOST + [DLL, "pr" * 100], folder(t_abs=OBJECT))
    expect(done.returncode == 0, "loads", done.returncode, done.stderr)


def program(seed):
    place = folder()
    subprocess.run([build / "fuzz/differ", "--write", str(seed), place / "t.abs", samples], check=True)
    data = (place / "t.abs").read_bytes()
    for steps in ("p", "d") if seed % 10 else ("pd", "ddrp"):
        outcomes = []
        for host in (NATIVE_HOST, HOST + [DLL]):
            place = folder(t_abs=data)
            done = run(host + [steps], place)
            outcomes.append((done.returncode, done.stdout.replace(b"\r\n", b"\n"), contents(place)))
        expect(outcomes[0][0] in (0, 1) and done.stdout.count(b"\r\n") == done.stdout.count(b"\n"), seed, steps)
        for native_part, part in zip(*outcomes):
            expect(native_part == part, "program", seed, steps, outcomes[0][0], outcomes[1][0], done.stderr,
                   str(native_part)[-200:], str(part)[-200:])


def programs():
    """The console differs in its line ends alone: CR LF, as the C runtime writes text."""
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        list(pool.map(program, range(program_count)))


with tempfile.TemporaryDirectory(dir=build) as scratch:
    place = folder(a_abs=OBJECT)
    run([build / "cli/scan695", "a.abs", "-o", "s.dstf", "--fst", "f.fst", "--trace", "t.trace"], place)
    run([build / "cli/scan695", "a.abs"], place)
    native = {name.rsplit(".", 1)[1]: data for name, data in contents(place).items()}
    tests = (tables, import_library, command_cases, open_file, interrupt, loads, programs)
    for test in tests if wine != "none" else tests[:1]:
        start = time.monotonic()
        test()
        print(f"{test.__name__}: {time.monotonic() - start:.1f} s", flush=True)
