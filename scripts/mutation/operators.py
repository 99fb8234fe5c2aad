"""The mutation operators: each applies to a token and gives mutants of the whole file."""

from .source import KEYWORDS

COMPARISONS = {
    "==": [("not-equal", "!=")],
    "!=": [("equal", "==")],
    "<": [("boundary", "<="), ("opposite", ">=")],
    "<=": [("boundary", "<"), ("opposite", ">")],
    ">": [("boundary", ">="), ("opposite", "<=")],
    ">=": [("boundary", ">"), ("opposite", "<")],
}
LOGIC = {"&&": [("or", "||")], "||": [("and", "&&")]}
ARITHMETIC = {
    "+": [("minus", "-")],
    "-": [("plus", "+")],
    "*": [("divide", "/")],
    "/": [("multiply", "*")],
    "%": [("multiply", "*")],
    "&": [("bit-or", "|")],
    "|": [("bit-and", "&")],
    "<<": [("shift-right", ">>")],
    ">>": [("shift-left", "<<")],
    "+=": [("subtract", "-=")],
    "-=": [("add", "+=")],
}
INCREMENTS = {"++": [("decrement", "--")], "--": [("increment", "++")]}
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>="}
# Return values that equal {}.
EMPTY = {"", "{}", "0", "0.0", "false", "true", "nullptr", "std::nullopt", "std::string()",
         "std::string_view()"}
# Tokens that may precede the condition of "?".
BEFORE_CONDITIONS = {"=", "return", "co_return", ",", ";", "?", ":", "+=", "<<", "{", "}"}
# First tokens of statements that cannot be dropped.
NOT_REMOVABLE = {"{", "if", "while", "for", "switch", "do", "else", "try", "catch", "case", "default",
                 "using", "const", "auto", "static", "constexpr", "struct"}


class Mutant:
    """One change to one file: replaces the characters from start to end."""

    is_by_meaning = False

    def __init__(self, source, start, end, name, replacement):
        self.path = source.path
        self.name = name
        self.text = source.text[:start] + replacement + source.text[end:]
        self.line = source.text.count("\n", 0, start) + 1
        self.column = start - source.text.rfind("\n", 0, start)
        self.place = (self.path, self.line, self.column, self.name)
        first = source.text.rfind("\n", 0, start) + 1
        last = source.text.find("\n", end)
        self.before = collapse_whitespace(source.text[first:last])
        self.after = collapse_whitespace(source.text[first:start] + replacement + source.text[end:last])

    @property
    def id(self):
        return ":".join(map(str, self.place))


def collapse_whitespace(text):
    return " ".join(text.split())


def mutants_of(source):
    """Returns all mutants of the source without duplicates, sorted by place."""
    found = []
    for index in range(len(source.tokens)):
        if not is_excluded(source, index):
            found += operators(source, index)
            found += constants(source, index)
            found += conditions(source, index)
            found += statements(source, index)
            found += returns(source, index)
    unique = {mutant.text: mutant for mutant in reversed(found) if mutant.text != source.text}
    return sorted(unique.values(), key=lambda mutant: mutant.place)


def is_excluded(source, index):
    """Returns whether the token is part of a static_assert, a reserve(), an operator's name or a pure specifier."""
    before = source.text_at(index - 1)
    if before == "operator" or (source.text_at(index) == "0" and before == "="
                                and source.text_at(index - 2) in (")", "const", "noexcept")):
        return True
    parent = source.tokens[index].parent
    while parent is not None:
        if source.text_at(parent - 1) in ("static_assert", "reserve"):
            return True
        parent = source.tokens[parent].parent
    return False


def replaced(source, index, changes):
    token = source.tokens[index]
    return [Mutant(source, token.start, token.end, name, text) for name, text in changes]


def operators(source, index):
    token = source.tokens[index]
    if token.kind != "punctuator":
        return []
    if token.text == "!":
        return replaced(source, index, [("without-not", "")])
    if token.text in INCREMENTS:
        return replaced(source, index, INCREMENTS[token.text])
    changes = {**COMPARISONS, **LOGIC, **ARITHMETIC}.get(token.text)
    return replaced(source, index, changes) if changes and source.is_spaced(index) else []


def is_stretch(source, index):
    """Returns whether the number is a layout's stretch factor, which rarely matters but for being 0 or not."""
    name = source.text_at(source.tokens[index].parent - 1) if source.tokens[index].parent else ""
    return name == "addStretch" or name in ("addWidget", "addLayout") and source.text_at(index - 1) == ","


def constants(source, index):
    token = source.tokens[index]
    if token.text in ("true", "false"):
        other = "false" if token.text == "true" else "true"
        return replaced(source, index, [(other, other)])
    if token.kind == "number" and is_stretch(source, index):
        return replaced(source, index, [("stretch", "1" if token.text == "0" else "0")])
    if token.kind == "number":
        if "p" in token.text:
            # A hexadecimal floating-point number, too large for one more to make a difference.
            return replaced(source, index, [("doubled", f"({token.text} * 2)")])
        changes = [("plus-1", f"({token.text} + 1)"), ("minus-1", f"({token.text} - 1)")]
        if "." in token.text and float(token.text.replace("'", "").rstrip("fFlL")):
            # One more would be too much for an opacity.
            changes.append(("half-more", f"({token.text} * 1.5)"))
        return replaced(source, index, changes)
    if token.kind == "char":
        other = f"static_cast<decltype({token.text})>({token.text} + 1)"
        return replaced(source, index, [("next-character", other)])
    return []


def is_one_comparison(source, indices):
    """Returns whether negating the expression would repeat the mutant of its comparison or of its "!"."""
    texts = [source.text_at(index) for index in indices]
    if {"&&", "||", "?", "="} & set(texts):
        return False
    return texts[:1] == ["!"] or any(
        text in COMPARISONS and source.is_spaced(index) for text, index in zip(texts, indices))


def negated(source, first, last):
    """Returns the mutant that negates the expression in the tokens [first, last)."""
    text = source.slice(first, last)
    start, end = source.tokens[first].start, source.tokens[last - 1].end
    return [Mutant(source, start, end, "negated", f"!({text})")]


def conditions(source, index):
    token = source.tokens[index]
    if token.text == "?" and source.is_in_code(index):
        first = index
        while first - 1 != token.parent and source.text_at(first - 1) not in BEFORE_CONDITIONS:
            before = source.tokens[first - 1]
            first = before.match if before.text in (")", "]", "}") else first - 1
        siblings = source.siblings(first, index, token.parent)
        return [] if is_one_comparison(source, siblings) else negated(source, first, index)
    if token.text not in ("if", "while", "for") or source.text_at(index + 1) != "(":
        return []
    opening, closing = index + 1, source.tokens[index + 1].match
    inside = source.siblings(opening + 1, closing, opening)
    ends = [place for place in inside if source.text_at(place) == ";"]
    if token.text == "for":
        if len(ends) != 2 or ends[0] + 1 == ends[1]:
            return []
        first, last = ends[0] + 1, ends[1]
    else:
        first, last = (ends[-1] if ends else opening) + 1, closing
    siblings = source.siblings(first, last, opening)
    assigned = [place for place in siblings if source.text_at(place) == "="]
    if assigned:
        # A declaration: the condition is its variable.
        if token.text == "while":
            return []
        variable = source.text_at(assigned[0] - 1)
        end = source.tokens[last - 1].end
        return [Mutant(source, end, end, "negated", f"; !{variable}")]
    return [] if is_one_comparison(source, siblings) else negated(source, first, last)


def is_removable(source, first, last):
    """Returns whether the code compiles without the statement: it is neither a declaration nor a block."""
    if source.text_at(first) in ("continue", "break", "throw"):
        return True
    if source.text_at(first) in ("return", "co_return"):
        return not ends_function(source, last)
    if source.text_at(first) in NOT_REMOVABLE:
        return False
    for index in range(first, last):
        text, token = source.text_at(index), source.tokens[index]
        if text in ASSIGNMENTS or text in ("(", "++", "--", "co_await"):
            return True
        is_name = token.kind == "word" and text not in KEYWORDS
        if index > first and is_name and (source.tokens[index - 1].kind == "word" or
                                          source.text_at(index - 1) in (">", "&", "*") and index > first + 1):
            return False
    return True


def ends_function(source, index):
    """Returns whether the statement that ends here is the last one of its function."""
    end = source.tokens[source.enclosing(index, ("function", "lambda"))].match
    index += 1
    while index < end:
        if source.text_at(index) == "}":
            index += 1
        elif source.text_at(index) in ("else", "catch"):
            while source.text_at(index) != "{":
                token = source.tokens[index]
                index = token.match + 1 if token.text == "(" else index + 1
            index = source.tokens[index].match + 1
        else:
            return False
    return True


def is_reserve(source, first, last):
    """Returns whether the statement does nothing but reserve memory."""
    return any(source.text_at(place) == "reserve" for place in range(first, last))


def statements(source, index):
    if not source.starts_statement(index):
        return []
    end = source.statement_end(index)
    if end is None or not is_removable(source, index, end) or is_reserve(source, index, end):
        return []
    return [Mutant(source, source.tokens[index].start, source.tokens[end].end, "dropped", ";")]


def returns(source, index):
    if source.text_at(index) not in ("return", "co_return") or not source.starts_statement(index):
        return []
    first, last = index + 1, source.statement_end(index)
    text = source.slice(first, last)
    if text in EMPTY:
        return []
    start, end = source.tokens[first].start, source.tokens[last - 1].end
    siblings = source.siblings(first, last, source.tokens[index].parent)
    punctuators = {source.text_at(place) for place in siblings if source.is_spaced(place)}
    if punctuators & (set(COMPARISONS) | set(LOGIC)) and "?" not in punctuators:
        return [Mutant(source, start, end, "returned-true", "true"),
                Mutant(source, start, end, "returned-false", "false")]
    block = source.enclosing(index, ("function", "lambda"))
    empty = "{}"
    if source.tokens[block].block == "lambda":
        empty = f"std::remove_cvref_t<decltype({text})>{{}}"
    return [Mutant(source, start, end, "returned-empty", empty)]
