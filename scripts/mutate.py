#!/usr/bin/env python3
"""Breaks src/semantics, src/codegen and src/target in small ways and counts which of the breaks a test notices.

All mutants stand in one build, each beside the statement that it changes and chosen by the environment variable
NORVANE_MUTANT, so that a mutant costs a run of the tests and no build. Which ones are made depends on --seed alone.
Those that don't compile are replaced by others. Mutants that change nothing that can be seen are listed with their
reason in tests/mutants/equivalent.txt and counted apart.
"""

import argparse
import os
import random
import re
import resource
import shutil
import subprocess
import sys
import time

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
FOLDERS = ('semantics', 'codegen', 'target')
EQUIVALENT = os.path.join(TOP, 'tests', 'mutants', 'equivalent.txt')
BUILD_FOLDER = os.path.join(TOP, 'build', 'mutants')
TREE = os.path.join(BUILD_FOLDER, 'tree')
BUILD = os.path.join(TREE, 'build', 'release')
RUN = os.path.join(BUILD_FOLDER, 'run')
MEMORY_LIMIT = 3 << 30
FILE_LIMIT = 1 << 30

# What a source with mutants begins with.
SELECTOR_NAME = 'IsMutant.h'
SELECTOR = '''#pragma once
#include <cstdlib>
inline bool IsMutant(int number)
{
    static const char* szChosen = std::getenv("NORVANE_MUTANT");
    static const int chosen = szChosen ? std::atoi(szChosen) : -1;
    return number == chosen;
}
'''

SWAPS = {'==': ['!='], '!=': ['=='], '<': ['<=', '>='], '<=': ['<', '>'], '>': ['>=', '<='], '>=': ['>', '<'],
         '+': ['-'], '-': ['+'], '&&': ['||'], '||': ['&&'], '+=': ['-='], '-=': ['+='],
         'true': ['false'], 'false': ['true'], 'std::min': ['std::max'], 'std::max': ['std::min']}


# ---- The text of a source

def mask(text):
    """The text with comments, literals and directives blanked; every other character keeps its place."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#[^\n]*', re.S | re.M)

    def blank(match):
        token = match.group()
        if token[0] in '"\'':
            return token[0] + '_' * (len(token) - 2) + token[0]
        return re.sub(r'[^\n]', ' ', token)
    return pattern.sub(blank, text)


OPENERS, CLOSERS = '([{', ')]}'


def match_forward(masked, start):
    """Behind the bracket that closes the one at `start`."""
    depth = 0
    for i in range(start, len(masked)):
        if masked[i] in OPENERS:
            depth += 1
        elif masked[i] in CLOSERS:
            depth -= 1
            if depth == 0:
                return i + 1
    return len(masked)


def opens_block(masked, brace):
    """Whether a brace begins a block, not a list of values."""
    before = masked[:brace].rstrip()
    return not before or before[-1] in ');{}:' or re.search(r'\b(else|do|const|override|noexcept|try)$', before)


def statement_start(masked, position):
    i, depth = position - 1, 0
    while i >= 0:
        c = masked[i]
        if c in ')]':
            depth += 1
        elif c == '}':
            rest = masked[i + 1:].lstrip()
            if depth == 0 and rest[:1] not in tuple('),;.(['):
                return i + 1
            depth += 1
        elif c in '([':
            depth = max(depth - 1, 0)
        elif c == '{':
            if depth == 0 and opens_block(masked, i):
                return i + 1
            depth = max(depth - 1, 0)
        elif c == ';' and depth == 0 and not inside_for(masked, i):
            return i + 1
        elif c == ':' and depth == 0 and re.search(r'(^|\n)\s*(case [^\n:]*(::[^\n:]*)*|default|public|private)$', masked[:i]):
            return i + 1
        i -= 1
    return 0


def inside_for(masked, semicolon):
    depth = 0
    for i in range(semicolon - 1, max(semicolon - 400, -1), -1):
        c = masked[i]
        if c in CLOSERS:
            depth += 1
        elif c in OPENERS:
            if depth == 0:
                return c == '(' and re.search(r'\b(for|if|while|switch)\s*$', masked[:i]) is not None
            depth -= 1
    return False


def statement_end(masked, start):
    depth = 0
    for i in range(start, len(masked)):
        if masked[i] in OPENERS:
            depth += 1
        elif masked[i] in CLOSERS:
            depth -= 1
            if depth < 0:
                return None
        elif masked[i] == ';' and depth == 0:
            return i + 1
    return None


def has_comma(masked, start, end):
    """Whether a comma stands outside brackets, as between the names of one declaration."""
    depth = 0
    for c in masked[start:end]:
        depth += (c in OPENERS) - (c in CLOSERS)
        if c == ',' and depth == 0:
            return True
    return False


DECLARATION = re.compile(r'(?:(?:const|auto|std::\w+|unsigned|[A-Z:][\w:]*|int|bool|char|double|float)\b(?:<[^;=]*?>)?'
                         r'[\s*&]*)+\s[*&]*\w+\s*=\s*(?=[^=])', re.S)
NO_STATEMENT = re.compile(r'(static|constexpr|inline|using|struct|class|enum|template|namespace|typedef|friend|extern|'
                          r'public|private|break|continue|goto|case|default|explicit|virtual|void|try|catch)\b')


def enclosing(masked, position):
    """What a mutant at the position replaces: (kind, begin, end), where kind is 'value' or 'statement'; or None."""
    at = statement_start(masked, position)
    while True:
        at += len(masked[at:]) - len(masked[at:].lstrip())
        if at > position:
            return None
        rest = masked[at:at + 200]
        word = re.match(r'else\b|case [^\n]*?[^:]:(?!:)|default:', rest)
        if word:
            at += word.end()
            continue
        head = re.match(r'(if|while|for|switch)\s*(constexpr\s*)?\(', rest)
        if not head:
            break
        begin = at + head.end()
        end = match_forward(masked, begin - 1) - 1
        if position < end:
            inside = masked[begin:end]
            if head.group(1) in ('for', 'switch') or head.group(2) or ';' in inside or DECLARATION.match(inside):
                return None
            return ('value', begin, end)
        at = end + 1
    if NO_STATEMENT.match(masked, at) or masked[at] == '{':
        return None
    end = statement_end(masked, at)
    if end is None or end <= position:
        return None
    declared = DECLARATION.match(masked, at, end)
    if declared:
        if position < declared.end() or masked[declared.end()] == '{' or has_comma(masked, declared.end(), end):
            return None
        return ('value', declared.end(), end - 1)
    return ('statement', at, end)


# ---- Mutants

TEXTS = {}   # as they were read first: what is edited during a run must not move the places of its mutants


def read_source(path):
    if path not in TEXTS:
        with open(os.path.join(TOP, path)) as file:
            TEXTS[path] = file.read()
    return TEXTS[path]


class Mutant:
    def __init__(self, name, text, begin, end, replacement, place):
        self.name, self.begin, self.end, self.replacement = name, begin, end, replacement
        self.kind, self.start, self.stop = place
        first = text.rfind('\n', 0, begin) + 1
        last = text.find('\n', end)
        self.line = text.count('\n', 0, begin) + 1
        self.before = ' '.join(text[first:last].split())
        self.after = ' '.join((text[first:begin] + replacement + text[end:last]).split())
        self.head_line = text.count('\n', 0, self.start) + 1

    def key(self):
        return (self.name, self.before, self.after)

    def text(self, source, masked):
        """The mutated statement or value on one line, without comments."""
        whole = without_comments(source, masked, self.start, self.begin) + self.replacement + \
            without_comments(source, masked, self.end, self.stop)
        return ' '.join(whole.split('\n')).strip()


def without_comments(source, masked, begin, end):
    return ''.join(masked[i] if masked[i] in ' \n' else source[i] for i in range(begin, end))


def is_in_bool_function(masked, position):
    heads = re.findall(r'^(?:[^\s#}{)][^\n]*\)[^\n;]*|    (?:static |inline )?\w[^\n]*\)[^\n;]*\{[^\n]*)$',
                       masked[:masked.find('\n', position)], re.M)
    return bool(heads) and re.search(r'\bbool [\w:]+\(', heads[-1]) is not None


def flips(masked):
    """All places and what comes in their stead: (begin, end, replacement)."""
    for match in re.finditer(r'(?<= )(==|!=|<=|>=|<|>|\+=|-=|\+|-|&&|\|\|)(?=\s)', masked):
        operator = match.group()
        beside = masked[match.end():].lstrip()[:1] + masked[:match.start()].rstrip()[-1:]
        if operator in ('+', '+=') and '"' in beside:
            continue
        for other in SWAPS[operator]:
            yield match.start(), match.end(), other
    for match in re.finditer(r'\b(true|false|std::min|std::max)\b', masked):
        yield match.start(), match.end(), SWAPS[match.group()][0]
    for match in re.finditer(r'(?<![\w=!<>])!(?=[\w(])', masked):
        yield match.start(), match.end(), ''
    for match in re.finditer(r"(?<![\w.'])(\d+)(?![\w.'])", masked):
        number = int(match.group())
        yield match.start(), match.end(), '0' if number == 1 else str(number + 1)
    for match in re.finditer(r'(?<![\w.>:])(\+\+|--)(?=[\w(*])', masked):
        yield match.start(), match.end(), '--' if match.group() == '++' else '++'
    for match in re.finditer(r'\breturn ([^;{}]+);', masked):
        if match.group(1) not in ('true', 'false') and is_in_bool_function(masked, match.start()):
            yield match.start(1), match.end(1), '!(%s)'
    for match in re.finditer(r'(?<=[;{})\s])[A-Za-z_][\w.:>\-\[\]]*\([^;]*\);', masked):
        if match.group().count('(') == match.group().count(')'):
            yield match.start(), match.end(), ';'


def find_mutants():
    mutants = []
    for folder in FOLDERS:
        for name in sorted(os.listdir(os.path.join(TOP, 'src', folder))):
            path = os.path.join('src', folder, name)
            text = read_source(path)
            masked = mask(text)
            for begin, end, replacement in flips(masked):
                if '%s' in replacement:
                    replacement = replacement % text[begin:end]
                place = enclosing(masked, begin)
                removed = replacement == ';'
                # A call is removed only where it is the whole statement.
                if place is None or removed and (place[0] != 'statement' or place[1:] != (begin, end)):
                    continue
                mutants.append(Mutant(path, text, begin, end, replacement, place))
    return mutants


def read_equivalent():
    """Three lines for each: the file and the line as it stands, "=>" and the mutated one, "--" and the reason."""
    known, lines = {}, []
    if os.path.exists(EQUIVALENT):
        lines = [line.rstrip('\n') for line in open(EQUIVALENT) if line.strip() and not line.startswith('#')]
    for first, second, third in zip(lines[::3], lines[1::3], lines[2::3]):
        name, before = first.split(': ', 1)
        assert second.startswith('=> ') and third.startswith('-- '), first
        known[(name, before, second[3:])] = third[3:]
    return known


# ---- The build

def write_tree(mutants):
    """Copies of the three folders with the mutants in them; files that don't change keep their time."""
    by_file = {}
    for number, mutant in mutants.items():
        by_file.setdefault(mutant.name, []).append((number, mutant))
    for folder in FOLDERS:
        for name in sorted(os.listdir(os.path.join(TOP, 'src', folder))):
            path = os.path.join('src', folder, name)
            text = read_source(path)
            text = insert(text, by_file.get(path, []))
            write_if_other(os.path.join(TREE, path), text)


def insert(source, mutants):
    masked, text, grown = mask(source), source, []
    places = {}
    for number, mutant in mutants:
        places.setdefault((mutant.start, mutant.stop, mutant.kind), []).append((number, mutant))
    # From the back, so that what lies in front stays in its place; one inside another one comes before it.
    for start, stop, kind in sorted(places, key=lambda place: (-place[0], place[1])):
        inside = [(number, mutant.text(source, masked)) for number, mutant in places[start, stop, kind]]
        end = stop + sum(length for position, length in grown if start <= position < stop)
        original = text[start:end]
        if kind == 'value':
            new = '(' + ''.join(f'IsMutant({n}) ? ({mutated}) : ' for n, mutated in inside) + f'({original}))'
        else:
            new = '{ ' + ''.join(f'if (IsMutant({n})) {{ {mutated} }} else ' for n, mutated in inside)
            new += '{ ' + original + ' } }'
        grown.append((start, len(new) - len(original)))
        text = text[:start] + new + text[end:]
    return f'#include "{SELECTOR_NAME}"\n#line 1\n{text}' if mutants else text


def configure():
    os.makedirs(TREE, exist_ok=True)
    folders = [entry for entry in sorted(os.listdir(TOP)) if os.path.isdir(os.path.join(TOP, entry))]
    for entry in folders:
        if entry == 'build' or entry.startswith('.'):
            continue
        shutil.copytree(os.path.join(TOP, entry), os.path.join(TREE, entry), dirs_exist_ok=True,
                        copy_function=copy_if_other)
        remove_gone(entry)
    write_if_other(os.path.join(TREE, 'src', SELECTOR_NAME), SELECTOR)
    with open(os.path.join(TOP, 'CMakeLists.txt')) as lists:
        folders = ' '.join('norvane_' + folder for folder in FOLDERS)
        write_if_other(os.path.join(TREE, 'CMakeLists.txt'), lists.read() + f'''
foreach(library {folders})
    target_compile_options(${{library}} PRIVATE -O0 -w)
endforeach()
''')
    # As the release is built: what no mutant changes comes out of a compiler cache, where there is one.
    subprocess.run(['cmake', '-S', TREE, '-B', BUILD, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=Release', '-DNORVANE_TESTS=ON',
                    '-DNORVANE_BENCHMARKS=OFF', '-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON'],
                   check=True, stdout=subprocess.DEVNULL)


def remove_gone(entry):
    for folder, _, names in os.walk(os.path.join(TREE, entry)):
        for name in names:
            path = os.path.join(folder, name)
            if not os.path.lexists(os.path.join(TOP, os.path.relpath(path, TREE))):
                os.remove(path)


def write_if_other(path, text):
    if os.path.exists(path):
        with open(path) as file:
            if file.read() == text:
                return
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, 'w') as file:
        file.write(text)


def copy_if_other(source, target):
    # The mutated folders are written by write_tree.
    if any(f'/src/{folder}/' in source for folder in FOLDERS):
        return
    if not os.path.exists(target) or open(source, 'rb').read() != open(target, 'rb').read():
        shutil.copy2(source, target)


def build(mutants, jobs):
    """Builds, taking out what doesn't compile, until all does. Gives the mutants that are left."""
    targets = ['compiler', 'case_runner'] + ['test_' + folder for folder in FOLDERS]
    while True:
        write_tree(mutants)
        done = subprocess.run(['cmake', '--build', BUILD, '-j', str(jobs), '--target', *targets, '--', '-k', '0'],
                              capture_output=True, text=True)
        if done.returncode == 0:
            return mutants
        bad = set()
        for path, line in re.findall(r'(src/\w+/\w+\.(?:cpp|h)):(\d+):\d+: (?:fatal )?error', done.stdout + done.stderr):
            here = [n for n, m in mutants.items() if m.name == path and m.head_line == int(line)]
            nearest = max((m.head_line for m in mutants.values() if m.name == path and m.head_line <= int(line)), default=0)
            bad.update(here or [n for n, m in mutants.items() if m.name == path and m.head_line == nearest])
        if not bad:
            sys.exit(done.stdout[-4000:] + done.stderr[-4000:] + '\nthe build fails, and no mutant is the cause')
        print(f'{len(bad)} do not compile', flush=True)
        mutants = {n: m for n, m in mutants.items() if n not in bad}


# ---- The tests

def limit():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_LIMIT, FILE_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(command, seconds, number):
    """Whether the command ends well in time. All that it has started ends with it."""
    environment = dict(os.environ, NORVANE_MUTANT=str(number))
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd=RUN,
                               env=environment, preexec_fn=limit, start_new_session=True)
    try:
        return process.wait(timeout=seconds) == 0
    except subprocess.TimeoutExpired:
        return False
    finally:
        try:
            os.killpg(process.pid, 9)
        except ProcessLookupError:
            pass
        process.wait()


def unit_test(folder, number, seconds):
    return run([os.path.join(BUILD, 'tests', 'test_' + folder), '--gtest_fail_fast', '--gtest_brief=1'], seconds, number)


def case_test(case, number, seconds):
    return run([os.path.join(BUILD, 'tests', 'cases', 'case_runner'), os.path.join(BUILD, 'compiler'),
                os.path.join(TREE, 'tests', 'cases', case), os.path.join(RUN, 'case')], seconds, number)


def list_cases():
    top = os.path.join(TREE, 'tests', 'cases')
    return [f'{area}/{case}' for area in sorted(os.listdir(top)) if os.path.isdir(os.path.join(top, area))
            for case in sorted(os.listdir(os.path.join(top, area))) if os.path.isdir(os.path.join(top, area, case))]


class Suite:
    """The tests. A few cases that hold much come first, then the folder's unit tests, then all other cases, those
    first that have killed most. Before a test is used it is run without a mutant, which it must stand."""

    def __init__(self, quick):
        os.makedirs(RUN, exist_ok=True)
        folder = os.path.join(TREE, 'tests', 'cases')
        self.cases = sorted(list_cases(), key=lambda case: -sum(
            os.path.getsize(os.path.join(folder, case, name)) for name in os.listdir(os.path.join(folder, case))
            if name.endswith('.st')))
        self.quick, self.kills, self.limits = quick, {}, {}

    def limit(self, name, test):
        if name not in self.limits:
            start = time.time()
            if not test(name, -1, 600):
                sys.exit(f'{name} fails without a mutant')
            self.limits[name] = 20 + 10 * (time.time() - start)
        return self.limits[name]

    def kills_it(self, name, number, test):
        if test(name, number, self.limit(name, test)):
            return False
        self.kills[name] = self.kills.get(name, 0) + 1
        return True

    def find_killer(self, number, folder):
        cases = sorted(self.cases, key=lambda case: -self.kills.get(case, 0))
        for case in cases[:self.quick]:
            if self.kills_it(case, number, case_test):
                return case
        if self.kills_it(folder, number, unit_test):
            return folder
        for case in cases[self.quick:]:
            if self.kills_it(case, number, case_test):
                return case
        return None


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--count', type=int, default=300)
    parser.add_argument('--first', type=int, default=0, help='leave out so many of them, to go on with a run')
    parser.add_argument('--jobs', type=int, default=os.cpu_count())
    parser.add_argument('--quick', type=int, default=12, help='how many cases are run in front of the unit tests')
    parser.add_argument('--mark', type=float, default=95, help='per cent that must be killed')
    options = parser.parse_args()

    everything = find_mutants()
    random.Random(options.seed).shuffle(everything)
    equivalent = read_equivalent()
    # Some more than asked for, in place of those that won't compile.
    drawn = dict(enumerate(everything[:options.count + options.count // 4 + 5]))
    print(f'{len(everything)} places, seed {options.seed}', flush=True)
    write_tree(drawn)
    configure()
    built = build(drawn, options.jobs)
    chosen = sorted(built)[options.first:options.count]
    os.nice(10)   # hours, perhaps, beside the work of others
    suite = Suite(options.quick)

    killed, survived, alike = 0, [], 0
    for number in chosen:
        mutant = built[number]
        if mutant.key() in equivalent:
            alike += 1
            continue
        killer = suite.find_killer(number, mutant.name.split('/')[1])
        if killer:
            killed += 1
            print(f'{number} killed by {killer}; {killed} of {killed + len(survived)}', flush=True)
            continue
        survived.append(mutant)
        print(f'{number} survives, line {mutant.line}\n{mutant.name}: {mutant.before}\n=> {mutant.after}', flush=True)
    counted = killed + len(survived)
    share = 100 * killed / counted if counted else 0
    print(f'{counted} mutants, {killed} killed ({share:.1f} %), {len(survived)} survived; '
          f'{alike} more are known to change nothing')
    return 0 if counted and share >= options.mark else 1


if __name__ == '__main__':
    sys.exit(main())
