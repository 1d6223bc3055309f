"""Finds the places of a C++ source at which one small change makes a mutant.

The reader isn't a compiler: it knows comments, literals and brackets. A change
that doesn't compile costs one build and is drawn again.
"""
import dataclasses
import re

CONTROL = re.compile(r'(if|else|for|while|do|switch|return|throw|break|continue|using|case|default)\b')
# A value that isn't returned would be no change but undefined.
REMOVABLE = re.compile(r'(if|for|while|break|continue|throw)\b|return;')
DECLARATION = re.compile(r'(?:const |static |constexpr |auto )|[\w:<>,]+(?:<.*>)?[&*]? [&*]?\w+\s*(?:[=({;\[,]|$)')
LITERAL = re.compile(r'u8?R?"(?:[^"\\\n]|\\.)*"|"(?:[^"\\\n]|\\.)*"|(?<!\d)\'(?:[^\'\\\n]|\\.)+\'')
COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/|^#[^\n]*(?:\\\n[^\n]*)*', re.S | re.M)
TOKENS = re.compile(f'(?P<comment>{COMMENT.pattern})|(?P<literal>{LITERAL.pattern})', re.S | re.M)
SWAPS = {' == ': ' != ', ' != ': ' == ', ' < ': ' <= ', ' > ': ' >= ', ' <= ': ' < ', ' >= ': ' > ',
         ' && ': ' || ', ' || ': ' && ', ' + 1': '', ' - 1': '', '++': '--',
         'true': 'false', 'false': 'true'}
OPERATORS = re.compile(r' (?:==|!=|<=|>=|<|>|&&|\|\|) | [+-] 1\b|\+\+|\b(?:true|false)\b')
PARTNER = {')': '(', ']': '[', '}': '{'}


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    start: int
    end: int
    replacement: str
    kind: str

    def applied(self, text):
        return text[:self.start] + self.replacement + text[self.end:]


def masked(text):
    """The same length with comments blank and literals as quotes around blanks."""
    def blank(match):
        found = match.group()
        kept = re.sub(r'[^\n]', ' ', found)
        return kept if match.group('comment') else '"' + kept[1:-1] + '"'
    return TOKENS.sub(blank, text)


def partners(code):
    """Where each opening bracket is closed, by position."""
    open_at, closed = [], {}
    for at, c in enumerate(code):
        if c in '([{':
            open_at.append(at)
        elif c in PARTNER and open_at and code[open_at[-1]] == PARTNER[c]:
            closed[open_at.pop()] = at
    return closed


def is_body(before):
    """Whether the brace after `before` opens statements, not a list or a type."""
    before = before.rstrip()
    return bool(re.search(r'(\)|\]|\b(?:else|do|try|const|noexcept|override)|-> [\w:<>]+)$', before))


def bodies(code, closed):
    for at, end in closed.items():
        if code[at] == '{' and is_body(code[max(0, at - 200):at]):
            yield at, end


def statements(code, closed, body):
    """Start and end of each statement of a body that ends with a semicolon."""
    at, end = body
    start = at = at + 1
    while at < end:
        if at in closed:
            opened, at = code[at], closed[at]
            if opened == '{' and not code[at + 1:end].lstrip().startswith((';', ')', ',', '.', '(')):
                start = at + 1
        elif code[at] == ';':
            lead = re.match(r'\s*(?:(?:case [^:]+(?:::[^:]+)*|default):(?!:)\s*)*', code[start:at])
            yield start + lead.end(), at + 1
            start = at + 1
        at += 1


def plain(statement):
    return len(statement) > 1 and not CONTROL.match(statement) and not DECLARATION.match(statement)


def arguments(code, closed, opened):
    """Start and end of each argument within a bracket."""
    end, parts = closed[opened], []
    start = at = opened + 1
    while at < end:
        if at in closed:
            at = closed[at]
        elif code[at] == ',':
            parts.append((start, at))
            start = at + 1
        at += 1
    parts.append((start, end))
    return [trimmed(code, *part) for part in parts]


def trimmed(code, start, end):
    while start < end and code[start].isspace():
        start += 1
    while end > start and code[end - 1].isspace():
        end -= 1
    return start, end


def shape(argument):
    """What may stand in another's place: a text, a number, any other value; '' for what can't."""
    if not argument or argument[0] in '[{&*' or argument in ('form', 'on', 'steps', 'this'):
        return ''
    if re.match(r'u?"', argument):
        return 'text'
    return 'number' if argument[0].isdigit() else 'value'


class Source:
    def __init__(self, file, text):
        self.file, self.text = file, text
        self.code = masked(text)
        self.closed = partners(self.code)
        self.bodies = sorted(bodies(self.code, self.closed))

    def mutants(self):
        for found in (self.statement_changes, self.conditions, self.operators, self.numbers,
                      self.texts, self.calls, self.pieces):
            yield from found()

    def made(self, start, end, replacement, kind):
        return Mutant(self.file, start, end, replacement, kind)

    def exchanged(self, one, other, kind):
        text = self.text
        return self.made(one[0], other[1], text[other[0]:other[1]] + text[one[1]:other[0]] +
                         text[one[0]:one[1]], kind)

    def in_code(self, at):
        return any(start < at < end for start, end in self.bodies)

    def statement_changes(self):
        for body in self.bodies:
            before = None
            for here in statements(self.code, self.closed, body):
                text = self.code[here[0]:here[1]]
                if plain(text) or REMOVABLE.match(text):
                    yield self.made(*here, ';', 'statement left out')
                if before and plain(text) and self.text[before[0]:before[1]] != self.text[here[0]:here[1]]:
                    yield self.exchanged(before, here, 'statements exchanged')
                before = here if plain(text) else None

    def conditions(self):
        for match in re.finditer(r'\bif \(', self.code):
            opened = match.end() - 1
            if opened in self.closed:
                inside = self.text[opened + 1:self.closed[opened]]
                yield self.made(opened + 1, self.closed[opened], f'!({inside})', 'condition negated')

    def operators(self):
        for match in OPERATORS.finditer(self.code):
            if self.in_code(match.start()) or match.group() in ('true', 'false'):
                yield self.made(*match.span(), SWAPS[match.group()], 'operator changed')

    def numbers(self):
        for match in re.finditer(r'(?<![\w.])\d+(?![\w.])', self.code):
            yield self.made(*match.span(), str(int(match.group()) + 1), 'constant changed')

    def texts(self):
        for match in TOKENS.finditer(self.text):
            literal = match.group()
            inside = literal[literal.find('"') + 1:-1]
            if match.group('comment') or not literal.endswith('"') or not inside.strip():
                continue
            last = match.start() + literal.find('"') + len(inside.rstrip())
            if '\\' not in inside:
                yield self.made(last, last + 1, '', 'text changed')

    def calls(self):
        for match in re.finditer(r'(?<![\w.>:])([A-Za-z_]\w*)\(', self.code):
            opened = match.end() - 1
            name = match.group(1)
            if opened not in self.closed or not self.in_code(opened) or CONTROL.match(name):
                continue
            parts = arguments(self.code, self.closed, opened)
            if len(parts) == 1 and name[0].islower() and shape(self.text[slice(*parts[0])]) == 'value':
                yield self.made(match.start(), opened, '', 'call left out')
            for one, other in zip(parts, parts[1:]):
                pair = self.text[slice(*one)], self.text[slice(*other)]
                if pair[0] != pair[1] and shape(pair[0]) == shape(pair[1]) != '':
                    yield self.exchanged(one, other, 'arguments exchanged')

    def pieces(self):
        for match in re.finditer(r'\s<< ', self.code):
            if not self.in_code(match.start()):
                continue
            at = match.end()
            while at < len(self.code) and self.code[at] not in ';),' and \
                    not re.match(r'\s<< ', self.code[at:at + 4]):
                at = self.closed.get(at, at) + 1
            yield self.made(match.start(), at, '', 'piece left out')
