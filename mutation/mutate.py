#!/usr/bin/env python3
"""Makes the faults of faults.txt, one at a time, and tells which of them the tests miss.

  mutate.py BUILD PLACE [FILE...]    all faults, or those of some files; run where the sources are

A fault is made in a copy of its file, in PLACE: what depends on it is compiled, without optimisation, and takes the
place of its object in the test programs of BUILD, which run until the first test fails. The status is 1 where fewer than
nine in ten are caught, and 2 where an entry of the list is no fault any more.
"""

import concurrent.futures
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path.cwd()
BUILD, PLACE = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
PROGRAMS = {'platform': '*', 'model': '*', 'LumoApi': '*', 'robustness': '*', 'documents': '*', 'cli': 'Inspect.*'}
HEADERS = f'{PLACE}/headers.h'
QUICK = 0.3  # seconds: such tests go first
EDIT = re.compile(r'\[-(.*?)-\]|\{\+(.*?)\+\}')


class Rotten(Exception):
    """An entry that is no fault any more."""


def faults():
    """Gives file, name, original and faulty text of each entry, and why it is no fault where it says so."""
    file = None
    for line in (ROOT / 'mutation/faults.txt').read_text().splitlines():
        if not line or line.startswith('#'):
            continue
        if not line.startswith(' '):
            file = line
            continue
        name, _, edit = line.strip().partition(': ')
        name, _, excuse = name.partition(' = ')
        yield file, name, EDIT.sub(r'\1', edit), EDIT.sub(r'\2', edit), excuse


def command(text, **options):
    return subprocess.run(text, shell=True, cwd=BUILD, capture_output=True, text=True, errors='replace', **options)


def required(text):
    done = command(text)
    if done.returncode != 0:
        sys.exit(f'{text}\n{done.stdout[-4000:]}{done.stderr}')
    return done.stdout


def timed(program, tests):
    """The times of the program's tests, which must pass."""
    binary, times = BUILD / f'tests/{program}_tests', PLACE / f'{program}.json'
    if not times.exists() or times.stat().st_mtime < binary.stat().st_mtime:
        required(f'{binary} --gtest_filter="{tests}" --gtest_output=json:{times}.new')
        os.replace(f'{times}.new', times)
    return times


def stages():
    """What is run against a fault: program, its tests, and how long they take when nothing is wrong. Of each
    program all quick tests are run at once, and a slow one alone."""
    found = []
    for program, tests in PROGRAMS.items():
        suites = json.loads(timed(program, tests).read_text())['testsuites']
        times = {f'{test["classname"]}.{test["name"]}': float(test['time'][:-1])
                 for suite in suites for test in suite['testsuite'] if test['result'] == 'COMPLETED'}
        slow = [test for test, time in times.items() if time >= QUICK]
        for is_slow, chosen in (False, times.keys() - slow), *((True, [test]) for test in slow):
            found.append((is_slow, program, ':'.join(chosen), sum(times[test] for test in chosen)))
    return found


def sources_with(file, original, dependencies):
    """The library's sources that see the file; a constant is seen only where its name is."""
    if file.endswith('.cpp'):
        return [file]
    constant = re.search(r'inline constexpr \w+ (k\w+)\{', original)
    def names(path):
        return path != file and constant[1] in (ROOT / path).read_text()
    return [paths[0] for paths in dependencies
            if file in paths and (not constant or any(names(path) for path in paths))]


def compiled(file, faulty, sources, compilations, place):
    """The objects of the sources as they are with the faulty file."""
    copy = place / file
    copy.parent.mkdir(parents=True)
    copy.write_text(faulty)
    objects = []
    for source in sources:
        path, known = (copy, HEADERS) if source == file else (ROOT / source, '/dev/null')
        objects.append(str(place / source.replace('/', '_')) + '.o')
        done = command(f'{compilations[source]} -iquote {place} -include {known} -o {objects[-1]} -c {path}')
        if done.returncode != 0:
            error = re.search(r'error: .*', done.stderr)
            raise Rotten(f'does not compile: {error[0] if error else done.stderr}')
    return ' '.join(objects)


def is_caught(objects, stages, place):
    """Whether some test fails, or takes far too long."""
    for _, program, tests, usual in stages:
        binary = place / f'{program}_tests'
        if not binary.exists():
            link = command(f'ninja -t commands tests/{program}_tests').stdout.splitlines()[-1]
            link = link.replace(' tests/CMakeFiles/', f' {objects} tests/CMakeFiles/', 1)
            required(link.replace(f'-o tests/{program}_tests', f'-s -o {binary}'))
        try:
            run = command(f'ulimit -v 8000000; ulimit -t {20 + int(8 * usual)}; exec {binary} '
                          f'--gtest_brief=1 --gtest_fail_fast --gtest_filter="{tests}"', timeout=300 + 50 * usual)
        except subprocess.TimeoutExpired:
            return True
        if run.returncode != 0:
            if run.returncode in (126, 127):
                raise Rotten(f'{program}_tests cannot be run: {run.stderr}')
            return True
    return False


def main():
    chosen = sys.argv[3:]
    all_stages = stages()
    shutil.rmtree(PLACE / 'faults', ignore_errors=True)
    (PLACE / 'faults').mkdir()
    if is_caught('', [stage for stage in all_stages if not stage[0]], PLACE / 'faults'):
        sys.exit('a test fails without any fault')
    entries = json.loads((BUILD / 'compile_commands.json').read_text())
    compilations = {os.path.relpath(entry['file'], ROOT): re.sub(r'^\S*ccache | -o .*', '', entry['command']) + ' -O0 -g0 -w'
                    for entry in entries if '/LumoApiObjects.dir/' in entry['command']}
    # Most of the time would go into reading the same headers again and again.
    pathlib.Path(HEADERS).write_text(''.join(f'#include {header}\n' for header in (
        '"LumoApi/LumoApiMessageAndUrlConverter.h"', '"LumoApi/internal/Incoming.h"',
        '"LumoApi/internal/Skeleton.h"', '<algorithm>', '<charconv>', '<map>', '<set>')))
    required(compilations['LumoApi/Routing.cpp'] + f' -x c++-header -o {HEADERS}.gch {HEADERS}')
    listed = re.findall(r'^CMakeFiles/LumoApiObjects\.dir/.*\n((?:    .*\n)+)', required('ninja -t deps'), re.M)
    dependencies = [[os.path.relpath(BUILD / path, ROOT) for path in text.split()
                     if (BUILD / path).resolve().is_relative_to(ROOT)] for text in listed]

    def judge(number, fault):
        file, name, original, faulty, excuse = fault
        place = PLACE / f'faults/{number}'
        try:
            text = (ROOT / file).read_text()
            if text.count(original) != 1 or original == faulty:
                raise Rotten(f'found {text.count(original)} times')
            if excuse:
                return 'equivalent'
            sources = sources_with(file, original, dependencies)
            objects = compiled(file, text.replace(original, faulty), sources, compilations, place)
            own = file.split('/')[0]
            ordered = sorted((stage for stage in all_stages if stage[1] == own or not stage[0]),
                             key=lambda stage: (stage[0], stage[1] != own, stage[3]))
            caught = is_caught(objects, ordered, place)
        except Rotten as rotten:
            print(f'ROTTEN  {file}: {name}: {rotten}', flush=True)
            return 'rotten'
        finally:
            shutil.rmtree(place, ignore_errors=True)
        if not caught:
            print(f'missed  {file}: {name}', flush=True)
        return 'caught' if caught else 'missed'

    picked = [fault for fault in faults() if not chosen or fault[0] in chosen]
    if not picked:
        sys.exit('no fault is listed for ' + ' '.join(chosen))
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        verdicts = list(pool.map(judge, range(len(picked)), picked))
    caught, missed, equivalent, rotten = (verdicts.count(v) for v in ('caught', 'missed', 'equivalent', 'rotten'))
    print(f'{caught + missed} faults: {caught} caught, {missed} missed; {equivalent} more change nothing')
    return 2 if rotten else caught < 9 * missed


if __name__ == '__main__':
    sys.exit(main())
