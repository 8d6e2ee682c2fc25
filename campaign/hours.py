"""What takes hours: fuzzing, what of the readers it reaches, and the tests in an emulated machine."""
import itertools
import os
import re
import subprocess

from campaign import BUILD, ROOT, STATE, command, require
from mutants import TESTS

FUZZ = ROOT / "build" / "fuzz"
CLANG = "14"
RUNS = {"project": 50_000_000, "state": 50_000_000, "search_part": 50_000_000, "settings": 50_000_000,
        "typed_number": 50_000_000, "speaker_data": 5_000_000, "program": 200_000}
READERS = ["model/project_file.cpp", "model/byte_stream.cpp", "model/line_array_file.cpp", "model/line_array_old.cpp",
           "engine/speaker_data_text.cpp", "optimize/search_part.cpp", "document/state_bytes.cpp",
           "app/state/settings.cpp", "lang/typed_number.cpp"]


def built_for_fuzzing():
    if os.environ.get("ORVA_BUILT"):  # and may not change meanwhile
        return
    command("cmake", "--preset", "fuzz", cwd=ROOT)
    command("cmake", "--build", "--preset", "fuzz", cwd=ROOT)


def fuzzed(run, target):
    """Slices of two minutes; the corpus of one is that of the next. Most have short inputs, of which many more fit in."""
    built_for_fuzzing()
    corpus = FUZZ / "corpus" / target
    corpus.mkdir(parents=True, exist_ok=True)
    for left, most in zip(run.slices(), itertools.cycle((4096, 4096, 4096, 65536))):
        done = command(FUZZ / "tests" / "fuzz" / f"fuzz_{target}", f"-runs={run.goal - run.done}",
                       f"-max_total_time={min(120, left)}", f"-max_len={most}", "-entropic=0", "-print_final_stats=1",
                       f"-artifact_prefix={FUZZ}/", corpus, ROOT / "tests" / "fuzz" / "corpus" / target,
                       env={"ASAN_OPTIONS": "detect_leaks=0:malloc_context_size=1", "QT_QPA_PLATFORM": "offscreen"})
        if calculated := re.search(r"stat::calculated:\s*(\d+)", done.stderr):
            run.kept["calculated"] = run.kept.get("calculated", 0) + int(calculated[1])
        run.add(int(re.search(r"number_of_executed_units:\s*(\d+)", done.stderr)[1]))
    calculated = f", {run.kept['calculated']:,} calculated to the end" if "calculated" in run.kept else ""
    return f"{run.done:,} executions under AddressSanitizer and UndefinedBehaviorSanitizer{calculated}, no finding"


def fuzz_part(target, what):
    def part(run):
        return fuzzed(run, target)
    part.__name__ = f"fuzz_{target}"
    part.__doc__ = what
    part.goal = RUNS[target]
    return part


def fuzz_coverage(run):
    """Lines of the readers that the fuzzers' corpus runs"""
    tree = STATE / "coverage"
    for _ in run.rounds():
        command("cmake", "-S", ROOT, "-B", tree, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DORVA_FUZZ=ON",
                f"-DCMAKE_CXX_COMPILER=clang++-{CLANG}", "-DCMAKE_CXX_FLAGS=-fprofile-instr-generate -fcoverage-mapping")
        targets = [f"fuzz_{target}" for target in RUNS if target != "program"]
        command("cmake", "--build", tree, "--target", *targets)
        profiles = []
        for target in targets:
            profiles.append(str(tree / f"{target}.profraw"))
            name = target.removeprefix("fuzz_")
            command(tree / "tests" / "fuzz" / target, "-runs=0", FUZZ / "corpus" / name, ROOT / "tests" / "fuzz" / "corpus" / name,
                    env={"LLVM_PROFILE_FILE": profiles[-1]})
        command(f"llvm-profdata-{CLANG}", "merge", *profiles, "-o", tree / "all.profdata")
        first, *others = [str(tree / "tests" / "fuzz" / target) for target in targets]
        report = command(f"llvm-cov-{CLANG}", "report", first, *[f"-object={other}" for other in others],
                         f"-instr-profile={tree / 'all.profdata'}", *[ROOT / reader for reader in READERS]).stdout
        run.kept["files"] = {}
        for line in report.splitlines():
            cells = line.split()
            if len(cells) >= 10 and cells[0].endswith(".cpp"):
                run.kept["files"][cells[0]] = (int(cells[7]), int(cells[8]))
    lines = sum(all_ for all_, _ in run.kept["files"].values())
    missed = sum(miss for _, miss in run.kept["files"].values())
    each = ", ".join(f"{os.path.basename(name)} {100 * (1 - miss / all_):.1f}" for name, (all_, miss) in run.kept["files"].items())
    return f"{100 * (1 - missed / lines):.1f} % of {lines} lines ({each})"


def fuzz_corpus(run):
    """What the fuzzers' corpus adds to tests/fuzz/corpus, of 4 KB at most; the rest is not kept"""
    for _ in run.rounds():
        for target in RUNS:
            kept = ROOT / "tests" / "fuzz" / "corpus" / target
            (FUZZ / "corpus" / target).mkdir(parents=True, exist_ok=True)
            command(FUZZ / "tests" / "fuzz" / f"fuzz_{target}", "-set_cover_merge=1", "-max_len=4096", f"-artifact_prefix={FUZZ}/", kept, FUZZ / "corpus" / target,
                    env={"ASAN_OPTIONS": "detect_leaks=0", "QT_QPA_PLATFORM": "offscreen"})
            run.kept[target] = len(list(kept.iterdir()))
    return ", ".join(f"{name} {count}" for name, count in run.kept.items() if name != "done")


def memcheck(run):
    """Every test under Valgrind"""
    if not os.environ.get("ORVA_BUILT"):
        command("cmake", "--build", "--preset", "release", "--target", *[f"orva_{name}_tests" for name in TESTS], cwd=ROOT)
    passed = run.kept.setdefault("passed", {})
    for left in run.slices():
        name = TESTS[run.done]
        so_far, log = passed.setdefault(name, []), STATE / f"memcheck-{name}.log"
        done = command("timeout", "-s", "KILL", left, "valgrind", "-q", "--error-exitcode=9", "--num-callers=30",
                       f"--log-file={log}", BUILD / "tests" / f"orva_{name}_tests", f"--gtest_filter=-{':'.join(so_far)}",
                       cwd=BUILD, status=None,
                       env={"QT_QPA_PLATFORM": "offscreen", "ORVA_PATIENCE_MS": "7200000",
                            "QT_HASH_SEED": "0"})  # with another the toolkit reads whole words beyond its texts
        failed = re.findall(r"\[  FAILED  \] (\S+) \(", done.stdout)
        # Regular expressions become machine code that reads whole words: it has no names, ours has.
        # What waits for other programs asks the system with no address, on purpose, whether it can.
        said = [error for error in re.split(r"==\d+== \n", log.read_text())
                if re.search(r"(at|by) 0x\w+: [^?]", error.split(" Address 0x")[0]) and "waitid(infop)" not in error]
        ended = done.returncode in (0, 9, -9)  # well, with what is passed over or when the time was up
        require(ended and not said and not failed, f"{name}: status {done.returncode}, failed {failed}; {said[:3]}")
        so_far += re.findall(r"\[       OK \] (\S+) \(", done.stdout)
        run.add(1 if "[  PASSED  ]" in done.stdout else 0)
    return ", ".join(f"{name} {len(tests)}" for name, tests in passed.items()) + "; nothing found"


memcheck.goal = len(TESTS)
fuzz_coverage.goal, fuzz_corpus.goal = 1, 1
PARTS = [fuzz_part("project", "libFuzzer on projects with their variants"), fuzz_part("state", "libFuzzer on recovered states"),
         fuzz_part("search_part", "libFuzzer on parts of a search"), fuzz_part("settings", "libFuzzer on stored options"),
         fuzz_part("typed_number", "libFuzzer on typed numbers"), fuzz_part("speaker_data", "libFuzzer on loudspeaker data"),
         fuzz_part("program", "A fuzzer's projects opened, predicted, rigged, reported, saved and reopened"), fuzz_corpus,
         fuzz_coverage, memcheck]
