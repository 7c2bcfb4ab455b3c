#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Mutation testing of the library: how many small changes to the sources the tests notice.

One mutant at a time, in a copy of the committed sources (git HEAD, unpacked into
build/mutate/src, so the working tree is never touched and a run is reproducible): one small change to one library source, an incremental rebuild of the test
executables of that module, the module's tests (CTest label = module folder) with a timeout, and
the outcome: killed (a test failed), survived (every test passed), no-compile (the change does not
build) or timeout. The operators:

  relational   < <= > >= == != swapped for a neighbour (< for <=, == for !=, ...)
  arithmetic   binary + - * / % swapped (+ for -, * for /, ...)
  constant     an integer literal plus or minus one
  negate       the condition of an if or while negated
  delete       an expression statement (assignment, call, increment) removed

Candidate sites are collected from every .cpp of every module (comments, string literals,
preprocessor lines, identification lines and static_asserts are skipped). The sample is drawn
from a seed, spread over the modules in proportion to their number of source lines and within a
module over the operators in turn, so the same seed gives the same mutants. Results go to build/mutate/results.jsonl (one line per mutant) and a
summary to standard output; mutate.py --report re-prints the summary of an earlier run.

--rerun-survivors applies each mutant recorded as survived again, to the committed sources of
now, and records whether the tests kill it now (build/mutate/rerun.jsonl): the check that a new
test answers a survivor. With --sanitize the tree is built under AddressSanitizer and
UndefinedBehaviorSanitizer (build/mutate/tree-asan), as the test command's asan configuration
does, which kills the mutants that only make a buffer too small.

Usage: scripts/mutate.sh [--seed N] [--count N] [--timeout SECONDS] [--modules a,b]
                         [--only a,b] [--report] [--rerun-survivors [--sanitize]]
"""
import argparse
import json
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
WORK = os.path.join(ROOT, 'build', 'mutate')
SRC = os.path.join(WORK, 'src')
TREE = os.path.join(WORK, 'tree')
RESULTS = os.path.join(WORK, 'results.jsonl')
RERUN = os.path.join(WORK, 'rerun.jsonl')

RELATIONAL = {'<': ['<=', '>'], '<=': ['<', '>='], '>': ['>=', '<'], '>=': ['>', '<='],
              '==': ['!='], '!=': ['==']}
ARITHMETIC = {'+': ['-'], '-': ['+'], '*': ['/'], '/': ['*'], '%': ['*']}
DECLARATION = re.compile(r'^\s*(const|constexpr|static|auto|int|unsigned|char|bool|size_t|'
                         r'int\d+_t|uint\d+_t|double|float|long|return|break|continue|goto|'
                         r'case|default|using|typedef|struct|enum|namespace|template|extern|'
                         r'[A-Z]\w*\s*[*&]?\s+\w+\s*[=;(])')


def modules():
    """The module list, as the build writes it (nls_modules.txt), or the default order."""
    listed = os.path.join(TREE, 'nls_modules.txt')
    if os.path.exists(listed):
        return open(listed).read().strip().split(';')
    return ['errlib', 'memmgr', 'ianacs', 'nls', 'glib', 'convlib']


def code_mask(line):
    """The line with string and character literals and // comments blanked out, so operators are
    only looked for in code. Block comments are handled by the caller."""
    out = []
    i = 0
    quote = None
    while i < len(line):
        c = line[i]
        if quote:
            out.append(' ')
            if c == '\\':
                out.append(' ')
                i += 2
                continue
            if c == quote:
                quote = None
            i += 1
            continue
        if c in '"\'':
            quote = c
            out.append(' ')
        elif line.startswith('//', i):
            out.append(' ' * (len(line) - i))
            break
        else:
            out.append(c)
        i += 1
    return ''.join(out)


def matching_paren(text, start):
    depth = 0
    for i in range(start, len(text)):
        if text[i] == '(':
            depth += 1
        elif text[i] == ')':
            depth -= 1
            if depth == 0:
                return i
    return -1


def sites(module):
    """Every candidate mutation of a module: (file, line index, column, operator, old, new)."""
    found = []
    folder = os.path.join(SRC, module)
    for name in sorted(os.listdir(folder)):
        if not name.endswith('.cpp') or name == 'nlsreport.cpp':
            continue
        path = os.path.join(module, name)
        lines = open(os.path.join(SRC, path)).read().split('\n')
        in_block = False
        for n, line in enumerate(lines):
            stripped = line.strip()
            if in_block:
                if '*/' in line:
                    in_block = False
                continue
            if stripped.startswith('/*'):
                in_block = '*/' not in stripped
                continue
            if (stripped.startswith('#') or '@(#)' in line or 'kIdent' in line
                    or 'static_assert' in line
                    or stripped.startswith('//') or not stripped):
                continue
            code = code_mask(line)
            for m in re.finditer(r'(?<![<>=!&|+\-*/%^])(<=|>=|==|!=|<|>)(?![<>=])', code):
                op = m.group(1)
                # template brackets and stream-like uses are not comparisons
                if op in ('<', '>') and (re.search(r'\w<\w|\w>\(|>\s*\w+\s*[;{=(]|cast<|::\w+<', code)
                                         and ' ' + op + ' ' not in code):
                    continue
                if op in ('<', '>') and code[m.start() - 1:m.start()] != ' ':
                    continue
                for new in RELATIONAL[op]:
                    found.append((path, n, m.start(), 'relational', op, new))
            for m in re.finditer(r' ([+\-*/%]) ', code):
                for new in ARITHMETIC[m.group(1)]:
                    found.append((path, n, m.start(1), 'arithmetic', m.group(1), new))
            for m in re.finditer(r'(?<![\w.])(\d+)(?![\w.])', code):
                value = int(m.group(1))
                for new in (value + 1, value - 1):
                    if new >= 0:
                        found.append((path, n, m.start(1), 'constant', m.group(1), str(new)))
            for m in re.finditer(r'\b(if|while) \(', code):
                open_at = m.end() - 1
                close = matching_paren(code, open_at)
                if close > 0:
                    found.append((path, n, open_at, 'negate', code[open_at:close + 1],
                                  '(!' + line[open_at:close + 1] + ')'))
            if (stripped.endswith(';') and not DECLARATION.match(line)
                    and re.search(r'(=|\+\+|--|\w\()', code) and '{' not in code
                    and not lines[n - 1].rstrip().endswith((',', '(', '=', '&&', '||', '?', ':'))):
                found.append((path, n, 0, 'delete', line, ''))
    return found


def source_lines(module):
    folder = os.path.join(SRC, module)
    return sum(len(open(os.path.join(folder, f)).read().split('\n'))
               for f in os.listdir(folder) if f.endswith('.cpp') and f != 'nlsreport.cpp')


def sample(seed, count, chosen):
    rng = random.Random(seed)
    sizes = {m: source_lines(m) for m in chosen}
    total = sum(sizes.values())
    picked = []
    for m in chosen:
        quota = max(1, round(count * sizes[m] / total))
        # Operators in turn, each time a random site of that operator: tables full of numbers
        # would otherwise make nearly every mutant a constant.
        by_kind = {}
        for site in sites(m):
            by_kind.setdefault(site[3], []).append(site)
        kinds = sorted(by_kind)
        for kind in kinds:
            rng.shuffle(by_kind[kind])
        turn = 0
        while quota > 0 and any(by_kind.values()):
            kind = kinds[turn % len(kinds)]
            turn += 1
            if by_kind[kind]:
                picked.append(by_kind[kind].pop())
                quota -= 1
    return picked


def apply(site):
    path, n, col, kind, old, new = site
    full = os.path.join(SRC, path)
    lines = open(full).read().split('\n')
    line = lines[n]
    if kind == 'delete':
        lines[n] = ''
    elif kind == 'negate':
        close = matching_paren(code_mask(line), col)
        lines[n] = line[:col] + new + line[close + 1:]
    else:
        assert line[col:col + len(old)] == old, (site, line)
        lines[n] = line[:col] + new + line[col + len(old):]
    open(full, 'w').write('\n'.join(lines))
    return line, lines[n]


def run(cmd, timeout=None, **kw):
    """Runs cmd in a process group of its own; on a timeout the whole group is killed (a test
    that hangs would otherwise outlive ctest) and TimeoutExpired raised."""
    check = kw.pop('check', False)
    process = subprocess.Popen(cmd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                               start_new_session=True, **kw)
    try:
        out, _ = process.communicate(timeout=timeout)
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        raise
    if check and process.returncode != 0:
        raise subprocess.CalledProcessError(process.returncode, cmd, out)
    return subprocess.CompletedProcess(cmd, process.returncode, out)


def prepare(sanitize=False):
    """A fresh copy of the committed sources and a configured, fully built tree."""
    if os.path.exists(SRC):
        shutil.rmtree(SRC)
    os.makedirs(SRC)
    archive = subprocess.Popen(['git', '-C', ROOT, 'archive', 'HEAD'], stdout=subprocess.PIPE)
    subprocess.run(['tar', '-x', '-C', SRC], stdin=archive.stdout, check=True)
    if archive.wait() != 0:
        sys.exit('git archive HEAD failed')
    if not os.path.exists(os.path.join(TREE, 'CMakeCache.txt')):
        # -O2 as the test command builds (GCC 12 warns falsely on some tests at -O3).
        run(['cmake', '-S', SRC, '-B', TREE, '-DCMAKE_BUILD_TYPE=Release',
             '-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG', '-DCMAKE_C_FLAGS_RELEASE=-O2 -DNDEBUG',
             '-DNLS_SANITIZE=' + ('ON' if sanitize else 'OFF')],
            check=True)
    build = run(['cmake', '--build', TREE, '-j', str(os.cpu_count() or 2)])
    if build.returncode != 0:
        sys.exit('the unmutated tree does not build:\n' + build.stdout[-3000:])


def module_targets(module):
    """The test executables whose tests carry the module's label."""
    listing = run(['ctest', '--test-dir', TREE, '-N', '-L', '^' + module + '$',
                   '--show-only=json-v1'])
    targets = set()
    for test in json.loads(listing.stdout).get('tests', []):
        command = test.get('command') or []
        if command:
            targets.add(os.path.basename(command[0]))
    return sorted(targets)


def report():
    rows = [json.loads(l) for l in open(RESULTS)]
    by_module = {}
    for r in rows:
        by_module.setdefault(r['module'], []).append(r['outcome'])
    print('%-10s %6s %7s %8s %10s %8s' % ('module', 'total', 'killed', 'survived', 'no-compile',
                                           'timeout'))
    for m, outcomes in by_module.items():
        print('%-10s %6d %7d %8d %10d %8d' % (m, len(outcomes), outcomes.count('killed'),
                                               outcomes.count('survived'),
                                               outcomes.count('no-compile'),
                                               outcomes.count('timeout')))
    outcomes = [r['outcome'] for r in rows]
    valid = [o for o in outcomes if o in ('killed', 'survived', 'timeout')]
    killed = outcomes.count('killed') + outcomes.count('timeout')
    print('total %d mutants, %d compiled, %d killed (timeouts count as killed), %d survived' %
          (len(rows), len(valid), killed, outcomes.count('survived')))
    for r in rows:
        if r['outcome'] == 'survived':
            print('survived: %s:%d %s: %s  ->  %s' % (r['file'], r['line'] + 1, r['operator'],
                                                     r['before'].strip(), r['after'].strip()))
    if not os.path.exists(RERUN):
        return
    # The survivors' fates in the reruns (--rerun-survivors, with and without --sanitize).
    fates = {}
    for r in (json.loads(l) for l in open(RERUN)):
        key = (r['file'], r['line'], r['before'], r['after'])
        fate = fates.setdefault(key, set())
        if r['outcome'] in ('killed', 'timeout'):
            fate.add('sanitized' if r.get('sanitized') else 'plain')
        elif r['outcome'] == 'code-changed':
            fate.add('code-changed')
    survivors = [r for r in rows if r['outcome'] == 'survived']
    plain = sanitized = 0
    left = []
    for r in survivors:
        fate = fates.get((r['file'], r['line'], r['before'], r['after']), set())
        if 'plain' in fate:
            plain += 1
        elif 'sanitized' in fate:
            sanitized += 1
        else:
            left.append(r)
    print('reruns of the %d survivors: %d killed by the tests, %d more only under the '
          'sanitizers, %d not killed' % (len(survivors), plain, sanitized, len(left)))
    for r in left:
        print('not killed: %s:%d %s: %s  ->  %s' % (r['file'], r['line'] + 1, r['operator'],
                                                   r['before'].strip(), r['after'].strip()))


def find_line(lines, row):
    """The index of the line a recorded mutant changed: its recorded line when that still reads
    as before (a trailing comment aside), else the one line of the file that does; None when the
    code has changed."""
    def code(text):
        return text.split('//')[0].rstrip()
    before = code(row['before'])
    n = row['line']
    if n < len(lines) and code(lines[n]) == before:
        return n
    found = [i for i, text in enumerate(lines) if code(text) == before]
    return found[0] if len(found) == 1 else None


def rerun_survivors(timeout):
    """Applies every survivor of results.jsonl again and records whether it is killed now."""
    rows = [json.loads(l) for l in open(RESULTS) if json.loads(l)['outcome'] == 'survived']
    targets = {}
    with open(RERUN, 'a') as results:
        for row in rows:
            path, module = row['file'], row['module']
            full = os.path.join(SRC, path)
            pristine = open(full).read()
            lines = pristine.split('\n')
            n = find_line(lines, row)
            started = time.time()
            if n is None:
                outcome = 'code-changed'
            else:
                lines[n] = row['after']
                open(full, 'w').write('\n'.join(lines))
                if module not in targets:
                    targets[module] = module_targets(module)
                try:
                    build = run(['cmake', '--build', TREE, '-j', str(os.cpu_count() or 2),
                                 '--target'] + targets[module], timeout=timeout)
                    if build.returncode != 0:
                        outcome = 'no-compile'
                    else:
                        test = run(['ctest', '--test-dir', TREE, '-L', '^' + module + '$',
                                    '-j', str(os.cpu_count() or 2), '--stop-on-failure',
                                    '--timeout', str(timeout)], timeout=timeout)
                        outcome = 'killed' if test.returncode != 0 else 'survived'
                except subprocess.TimeoutExpired:
                    outcome = 'timeout'
                open(full, 'w').write(pristine)
            result = dict(row, outcome=outcome, sanitized=TREE.endswith('-asan'),
                          seconds=round(time.time() - started, 1))
            results.write(json.dumps(result) + '\n')
            results.flush()
            print('%-12s %s:%d %s: %s  ->  %s' % (outcome, path, row['line'] + 1,
                                                  row['operator'], row['before'].strip(),
                                                  row['after'].strip()), flush=True)
    run(['cmake', '--build', TREE, '-j', str(os.cpu_count() or 2)])


def main():
    parser = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    parser.add_argument('--seed', type=int, default=2026)
    parser.add_argument('--count', type=int, default=200)
    parser.add_argument('--timeout', type=int, default=300)
    parser.add_argument('--modules', default=','.join(modules()))
    parser.add_argument('--only', default='',
                        help='run only the sampled mutants of these modules, appending their '
                             'results (the sample stays the one of --modules)')
    parser.add_argument('--report', action='store_true')
    parser.add_argument('--rerun-survivors', action='store_true',
                        help='apply the recorded survivors again and record whether the tests '
                             'kill them now (build/mutate/rerun.jsonl)')
    parser.add_argument('--sanitize', action='store_true',
                        help='with --rerun-survivors: build under AddressSanitizer and '
                             'UndefinedBehaviorSanitizer (build/mutate/tree-asan)')
    args = parser.parse_args()
    if args.report:
        report()
        return
    os.makedirs(WORK, exist_ok=True)
    if args.rerun_survivors:
        global TREE
        if args.sanitize:
            TREE = TREE + '-asan'
        prepare(args.sanitize)
        rerun_survivors(args.timeout)
        return
    prepare()
    chosen = args.modules.split(',')
    mutants = sample(args.seed, args.count, chosen)
    if args.only:
        only = args.only.split(',')
        mutants = [m for m in mutants if m[0].split('/')[0] in only]
    targets = {m: module_targets(m) for m in chosen}
    with open(RESULTS, 'a' if args.only else 'w') as results:
        for i, site in enumerate(mutants):
            path, n, col, kind, old, new = site
            module = path.split('/')[0]
            pristine = open(os.path.join(SRC, path)).read()
            before, after = apply(site)
            started = time.time()
            try:
                build = run(['cmake', '--build', TREE, '-j', str(os.cpu_count() or 2),
                             '--target'] + targets[module], timeout=args.timeout)
                if build.returncode != 0:
                    outcome = 'no-compile'
                else:
                    test = run(['ctest', '--test-dir', TREE, '-L', '^' + module + '$', '-j',
                                str(os.cpu_count() or 2), '--stop-on-failure', '--timeout',
                                str(args.timeout)], timeout=args.timeout)
                    outcome = 'killed' if test.returncode != 0 else 'survived'
            except subprocess.TimeoutExpired:
                outcome = 'timeout'
            open(os.path.join(SRC, path), 'w').write(pristine)
            row = {'id': i, 'module': module, 'file': path, 'line': n, 'operator': kind,
                   'before': before, 'after': after, 'outcome': outcome,
                   'seconds': round(time.time() - started, 1)}
            results.write(json.dumps(row) + '\n')
            results.flush()
            print('%3d/%d %-10s %s:%d %s' % (i + 1, len(mutants), outcome, path, n + 1, kind),
                  flush=True)
    # The unmutated objects back, so the tree is ready for the next run.
    run(['cmake', '--build', TREE, '-j', str(os.cpu_count() or 2)])
    report()


if __name__ == '__main__':
    main()
