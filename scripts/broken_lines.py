"""What a line of C++ may be broken into, for mutants.py: text by text, without a parser.

It leans on the format of the sources: blanks around every binary operator, a definition's head at column 0,
one statement per line. What comes out need not compile.
"""

import re


def literal(text):
    return re.compile(re.escape(text))


def stepped(step):
    def change(match):
        value = int(match[1], 0) + step
        return f"{value}{match[2]}" if value >= 0 else None
    return change


def scaled(match):
    value = float(match[1])
    return f"{value * 1.125 if value else 0.5!r}{match[2]}"


def swapped(match):
    return f"{match[1]}({match[3]}, {match[2]}" if match[2] != match[3] else None


WHOLE = re.compile(r"(?<![\w.\"])(0[xX][0-9a-fA-F]+|\d+)([uUlL]*)(?![\w.])")
ATOM = r"([^\s,(){}]+(?:\([^(){}]*\))?)"
OPERATORS = [
    ("<", "<="), ("<", ">"), ("<=", "<"), (">", ">="), (">", "<"), (">=", ">"), ("==", "!="), ("!=", "=="),
    ("&&", "||"), ("||", "&&"), ("+", "-"), ("-", "+"), ("*", "/"), ("/", "*"), ("%", "*"), ("+=", "-="),
    ("-=", "+="), ("*=", "/="), ("/=", "*="), ("|=", "="), ("+=", "="), ("&", "|"), ("|", "&")]
WORDS = [("true", "false"), ("false", "true"), ("IDYES", "IDNO"), ("IDOK", "IDCANCEL")]

# A pattern, and what a match becomes: a text, or a function of the match, whose None means nothing.
CHANGES = [
    *((literal(f" {old} "), f" {new} ") for old, new in OPERATORS),
    *((re.compile(rf"\b{old}\b"), new) for old, new in WORDS),
    (re.compile(r"(?<!; )\+\+"), "--"), (re.compile(r"(?<!; )--"), "++"),
    (re.compile(r"(?<![\w)])!(?=[\w(])"), ""),                                  # a negation
    (re.compile(r"(?<=[(,=?:{] )-(?=[\w(])|(?<=[({])-(?=[\w(])"), ""),          # a sign
    (WHOLE, stepped(1)), (WHOLE, stepped(-1)),
    (re.compile(r"(?<![\w.])(\d+\.\d*|\d+e\d+)([fF]?)(?!\w)"), scaled),
    (re.compile(rf"(\w+)\({ATOM}, {ATOM}"), swapped),                           # the first two arguments
    (re.compile(r"\? ([^?:]+) : ([^?:;,]+?)(?=[;,)])"), lambda m: f"? {m[2]} : {m[1]}"),
    (re.compile(r"\bif \((.*)\) \{$"), lambda m: f"if (!({m[1]})) {{"),
    (re.compile(r"\} else "), "} "),
    (literal("::min)"), "::max)"), (literal("::max)"), "::min)"),
    (re.compile(r"\.x\b"), ".y"), (re.compile(r"\.y\b"), ".z"), (re.compile(r"\.z\b"), ".x"),
]
QUOTED = re.compile(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)\'')
LAST_OF_TEXT = re.compile(r'"((?:[^"\\]|\\.)*?)(?:[^"\\]|\\.)"')
DECLARATION = re.compile(
    r"\s*(?:const |constexpr |static |auto |using |return\b|case |default:|else\b|typename |"
    r"(?:[\w:]+(?:<[^;=]*>)?[&*]? )+[&*]?\w+(?:\[\w*\])*(?: = |[;({]))")
SKIPPED = re.compile(
    r"\s*(?:[\w:<>*& ]+ \w+(?:\[.*\])*;|#|//|template|using |namespace|static_assert|class |struct |"
    r"enum \w+ \{|public:|private:|protected:|friend |extern |typename |[{}]*;?$)|.*= (?:default|delete);")
CONSTANT = re.compile(r"(?:static |inline )?(?:constexpr|const) ")


def without_comment(line):
    """The code of a line. A comment behind a text stays: it does no harm."""
    return line if '"' in line.split("//")[0] else re.sub(r"\s*//.*$", "", line)


def masked(code):
    """Texts and characters lose what stands between their quotes, so that no pattern matches inside."""
    return QUOTED.sub(lambda m: m[0][0] + "\0" * (len(m[0]) - 2) + m[0][0], code)


def unmasked(code, quoted):
    """The texts back in their order; None when one has been lost."""
    rest = list(quoted)
    places = re.compile(r'["\']\0*["\']')
    return places.sub(lambda m: rest.pop(0), code) if len(places.findall(code)) == len(rest) else None


def is_removable(code, before, indent):
    return (code.endswith(";") and code.startswith(" " * indent) and not DECLARATION.match(code)
            and code.count("(") == code.count(")") and code.count("{") == code.count("}")
            and (before == "" or before[-1] in ";{}:"))


def broken_lines(line, before, indent):
    """Every line that this one may be broken into. `before` is the last line of code in front of it;
    statements stand at least `indent` deep."""
    code = without_comment(line)
    if SKIPPED.match(code) or not code.startswith(" ") and not CONSTANT.match(code):
        return []
    bare, quoted = masked(code), QUOTED.findall(code)
    found = set()
    for pattern, becomes in CHANGES:
        for match in pattern.finditer(bare):
            new = becomes(match) if callable(becomes) else becomes
            if new is not None:
                found.add(unmasked(bare[:match.start()] + new + bare[match.end():], quoted))
    for match in LAST_OF_TEXT.finditer(code):
        found.add(f'{code[:match.start()]}"{match[1]}"{code[match.end():]}')
    if is_removable(code, before, indent):
        found.add(";")
    return sorted(text for text in found if text not in (None, code))


def candidates(path, text, chance):
    """One break for each line of a file that can be broken: its number from 0, the line, what it becomes."""
    before = ""
    for number, line in enumerate(text.splitlines()):
        choices = broken_lines(line, before, 4 if path.endswith(".h") else 2)
        if choices:
            yield number, line, chance.choice(choices)
        before = without_comment(line).strip() or before
