#!/usr/bin/env python3
"""Draws mutants of the logic folders, runs the tests on each, and lists those that survive.

See README.md. Restartable: what is in the results file isn't run again.
"""
import argparse
import collections
import difflib
import hashlib
import json
import os
import pathlib
import random
import re
import resource
import shlex
import signal
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
import mutants  # noqa: E402

PROJECT = pathlib.Path(__file__).resolve().parents[2]
MEMORY = '/dev/shm' if os.path.isdir('/dev/shm') else None
# Folder: what is linked anew with a change, and the test programs, the nearest first.
FOLDERS = {
    'src/app': ('tolvek_app', ['app/tolvek_app_tests', 'shell/tolvek_shell_tests']),
    'src/store': ('tolvek_store', ['store/tolvek_store_tests', 'shell/tolvek_shell_tests']),
    'src/filter': ('tolvek_filter', ['filter/tolvek_filter_tests', 'shell/tolvek_shell_tests']),
    'src/reply': ('tolvek_reply', ['reply/tolvek_reply_tests', 'reply/tolvek_reply_screen_tests',
                                   'shell/tolvek_shell_tests']),
    'src/friend': ('tolvek_friend', ['friend/tolvek_friend_tests', 'shell/tolvek_shell_tests']),
    'src/import': ('tolvek_import', ['import/tolvek_import_tests', 'shell/tolvek_shell_tests']),
    'src/window': ('tolvek_window', ['window/tolvek_window_tests', 'shell/tolvek_shell_tests']),
    'src/browse': ('tolvek_browse', ['browse/tolvek_browse_tests', 'shell/tolvek_shell_tests']),
    'src/shell': ('tolvek_shell', ['shell/tolvek_shell_tests']),
    'src/converter': ('tolvek_converter_tests', ['converter/tolvek_converter_tests']),
    'src/platform/dao': ('tolvek_dao', ['platform/dao/tolvek_dao_tests', 'store/tolvek_store_tests',
                                        'shell/tolvek_shell_tests']),
}


class Tree:
    """A checkout of its own with a build of its own. Neither is changed by a mutant: the
    changed source, its object and its library lie in a temporary folder before the others."""

    def __init__(self, path, commit):
        self.path, self.build = path, path / 'build' / 'mutation'
        if not path.exists():
            run(['git', '-C', PROJECT, 'worktree', 'add', '--detach', path, commit])
        run(['cmake', '-S', path, '-B', self.build, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=Debug',
             '-DBUILD_SHARED_LIBS=ON', '-DCMAKE_LINK_DEPENDS_NO_SHARED=ON',
             '-DCMAKE_CXX_FLAGS=-w -g0'])
        self.compiled = {entry['file']: entry['command'] for entry in
                         json.loads((self.build / 'compile_commands.json').read_text())}

    def make(self, targets):
        run(['cmake', '--build', self.build, '-j', '1', '--target', *sorted(targets)])

    def link_command(self, target):
        said = subprocess.run(['ninja', '-C', self.build, '-t', 'commands', target],
                              capture_output=True, text=True, check=True).stdout
        return said.splitlines()[-1]

    def own_suites(self, file):
        """The filter of the suites in the test files of that source; '' for none."""
        source = pathlib.PurePath(file)
        folder = self.path / 'tests' / source.parent.relative_to('src')
        text = ''.join(path.read_text() for path in folder.glob(f'{source.stem}*_test.cpp'))
        suites = sorted(set(re.findall(r'^TEST(?:_[FP])?\((\w+),', text, re.M)))
        return ':'.join(f'{suite}.*:*/{suite}.*' for suite in suites)


class Changed:
    """One mutant, built into a folder."""

    def __init__(self, tree, mutant, folder):
        self.tree, self.folder = tree, pathlib.Path(folder)
        self.source = tree.path / mutant.file
        self.target, self.programs = FOLDERS[str(pathlib.PurePath(mutant.file).parent)]
        (self.folder / 'changed.cpp').write_text(mutant.applied(self.source.read_text()))

    def compile(self):
        words = shlex.split(self.tree.compiled[str(self.source)])
        at = words.index('-o')
        self.object = words[at + 1]
        words[at + 1] = str(self.folder / 'changed.o')
        words[words.index(str(self.source))] = str(self.folder / 'changed.cpp')
        words.insert(1, f'-I{self.source.parent}')
        return self.done([word for word in words if word != '-g' and not word.endswith('ccache')])

    def link(self):
        command = self.tree.link_command(self.target)
        result = re.search(r'-o (\S+)', command).group(1)
        mine = str(self.folder / 'changed.o')
        if self.object in command:
            command = command.replace(self.object, mine)
        else:  # out of an archive, which gives only what isn't there yet
            command = re.sub(r'(\S+_core\.a)', rf'{mine} \1', command)
        self.linked = self.folder / pathlib.PurePath(result).name
        return self.done(['sh', '-c', command.replace(f'-o {result}', f'-o {self.linked}')])

    def done(self, words):
        return subprocess.run(words, cwd=self.tree.build, capture_output=True).returncode == 0

    def test(self, program, limit, only):
        """'passed', 'failed' or 'timed out', with the first failing test."""
        path = self.tree.build / 'tests' / program
        if path.name == self.linked.name:
            path = self.linked
        with tempfile.TemporaryDirectory(dir=MEMORY) as scratch:
            started = subprocess.Popen(
                [path, '--gtest_fail_fast', '--gtest_brief=1', f'--gtest_filter={only or "*"}'],
                cwd=scratch, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=limit_resources,
                env={**os.environ, 'TMPDIR': scratch, 'LD_LIBRARY_PATH': str(self.folder),
                     'QT_QPA_PLATFORM': 'offscreen', 'LC_ALL': 'C.UTF-8'})
            try:
                said = started.communicate(timeout=limit)[0].decode(errors='replace')
            except subprocess.TimeoutExpired:
                os.killpg(started.pid, signal.SIGKILL)
                started.communicate()
                return 'timed out', program
        failed = re.findall(r'^\[  FAILED  \] ([^\s,]+)', said, re.M)
        if started.returncode == 0:
            return 'passed', ''
        return 'failed', failed[0] if failed else f'{program}: {started.returncode}'


def run(words):
    subprocess.run([str(word) for word in words], check=True, stdout=subprocess.DEVNULL)


def limit_resources():
    """What runs away ends itself before it takes the machine with it."""
    resource.setrlimit(resource.RLIMIT_AS, (6 << 30, 6 << 30))
    resource.setrlimit(resource.RLIMIT_FSIZE, (512 << 20, 512 << 20))


def judge(tree, mutant, near, limit):
    with tempfile.TemporaryDirectory(dir=MEMORY) as folder:
        changed = Changed(tree, mutant, folder)
        if not changed.compile() or not changed.link():
            return 'not compiled', ''
        own = tree.own_suites(mutant.file)  # most mutants end here
        rounds = [(changed.programs[0], own)] if own else []
        if not near or not own:
            rounds += [(program, '') for program in changed.programs[:1 if near else None]]
        for program, only in rounds:
            outcome, by = changed.test(program, limit, only)
            if outcome != 'passed':
                return {'failed': 'killed'}.get(outcome, outcome), by
    return 'survived', 'the nearest tests' if near else ''


def candidates(tree, folders):
    by_kind = collections.defaultdict(list)
    for folder in folders:
        for path in sorted((tree.path / folder).glob('*.cpp')):
            if path.name == 'main.cpp':  # the program's entry; no test program has it
                continue
            name = str(path.relative_to(tree.path))
            for mutant in mutants.Source(name, path.read_text()).mutants():
                by_kind[mutant.kind].append(mutant)
    return by_kind


def drawn(by_kind, seed):
    """All candidates in the order of the draw: each kind is as likely as the others."""
    chance = random.Random(seed)
    by_kind = {kind: list(found) for kind, found in sorted(by_kind.items())}
    while by_kind:
        kind = chance.choice(sorted(by_kind))
        found = by_kind[kind]
        yield found.pop(chance.randrange(len(found)))
        if not found:
            del by_kind[kind]


def identity(mutant):
    what = f'{mutant.start} {mutant.end} {mutant.replacement}'
    return f'{mutant.file}:{mutant.kind}:{hashlib.sha1(what.encode()).hexdigest()[:8]}'


def difference(mutant, text):
    lines = difflib.unified_diff(text.splitlines(), mutant.applied(text).splitlines(),
                                 mutant.file, mutant.file, n=1, lineterm='')
    return '\n'.join(list(lines)[2:])


class Results:
    def __init__(self, path):
        self.path = path
        lines = path.read_text().splitlines() if path.exists() else []
        self.done = {result['id']: result for result in map(json.loads, lines)}  # the last counts

    def keep(self, result):
        self.done[result['id']] = result
        with self.path.open('a') as out:
            out.write(json.dumps(result, ensure_ascii=False) + '\n')
        print(result['outcome'], result['id'], result['by'], f"{result['seconds']} s", flush=True)

    def counted(self):
        return sum(result['outcome'] != 'not compiled' for result in self.done.values())

    def near_survivors(self):
        return {name for name, result in self.done.items()
                if result['outcome'] == 'survived' and result['by']}

    def report(self):
        for result in self.done.values():
            if result['outcome'] == 'survived':
                print(f"\n{result['id']} {result['by']}\n{result['diff']}")
        tally = collections.Counter(result['outcome'] for result in self.done.values())
        print('\n' + ', '.join(f'{outcome} {count}' for outcome, count in sorted(tally.items())))


def one(tree, mutant, asked):
    began = time.monotonic()
    outcome, by = judge(tree, mutant, asked.near, asked.limit)
    return {'id': identity(mutant), 'outcome': outcome, 'by': by,
            'seconds': round(time.monotonic() - began, 1),
            'diff': difference(mutant, (tree.path / mutant.file).read_text())}


def run_all(tree, results, asked):
    again = results.near_survivors() if asked.again else set()
    for mutant in drawn(candidates(tree, asked.folder or FOLDERS), asked.seed):
        if asked.again and identity(mutant) in again or \
                not asked.again and identity(mutant) not in results.done:
            results.keep(one(tree, mutant, asked))
        if not asked.again and results.counted() >= asked.count:
            break


def arguments():
    ask = argparse.ArgumentParser(description=__doc__)
    ask.add_argument('--count', type=int, default=300, help='mutants that compile')
    ask.add_argument('--seed', type=int, default=1)
    ask.add_argument('--commit', default='HEAD')
    ask.add_argument('--tree', type=pathlib.Path, default=PROJECT / 'build' / 'mutation-tree')
    ask.add_argument('--folder', action='append', choices=sorted(FOLDERS))
    ask.add_argument('--limit', type=int, default=900, help='seconds for a test program')
    ask.add_argument('--near', action='store_true', help='only the tests of the changed file')
    ask.add_argument('--again', action='store_true', help="all tests on what survived --near")
    ask.add_argument('--report', action='store_true', help='list what is known; run nothing')
    return ask.parse_args()


def main():
    asked = arguments()
    results = Results(asked.tree.parent / f'{asked.tree.name}-{asked.seed}.jsonl')
    if not asked.report:
        tree = Tree(asked.tree.resolve(), asked.commit)
        wanted = [FOLDERS[folder] for folder in asked.folder or FOLDERS]
        programs = {p.rsplit('/', 1)[1] for _, near in wanted for p in near[:1 if asked.near else None]}
        tree.make({target for target, _ in wanted} | programs)
        run_all(tree, results, asked)
    results.report()


if __name__ == '__main__':
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    main()
