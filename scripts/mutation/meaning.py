"""Mutation operators by meaning: another thing of the same kind, in another order, or at another time."""

import re

from .operators import ASSIGNMENTS, Mutant, is_excluded, is_removable
from .vocabulary import stem

# Functions whose lambda runs after they have returned.
LATER = {"connect", "invokeMethod", "singleShot", "runOnMainThread", "runDetached", "thread", "async"}
# Calls that give another value of the type of their object or first argument.
SAME_TYPE_METHOD = re.compile(r"(?!is|has)\w{3,}ed|with[A-Z]\w*|lighter|darker")
SAME_TYPE_FUNCTION = re.compile(r"(?!is[A-Z]|has[A-Z]|set[A-Z]|draw[A-Z]|run[A-Z])\w{3,}ed|max|min|clamp")
# Functions whose text no user sees: names of objects, keys, and messages on broken invariants.
INTERNAL_TEXT = {"setObjectName", "setProperty", "property", "findChild", "findChildren", "SIGNAL", "SLOT",
                 "throwErrno", "check", "fatalError", "static_assert", "Q_CLASSINFO"}
LITERAL_WRAPPERS = {"QStringLiteral", "QLatin1String"}
# The context before a text to translate.
CONTEXTUAL = {"translate", "QT_TRANSLATE_NOOP"}
# What is no letter of a text: placeholders, escapes and mnemonics.
NO_LETTER = re.compile(r"%L?[0-9n]+|%s|\\u[0-9A-Fa-f]{4}|\\x[0-9A-Fa-f]+|\\.|&\w+;|<[^>]*>")
JUMPS = {"return", "co_return", "co_await", "break", "continue", "throw"}


class MeaningMutant(Mutant):
    is_by_meaning = True


def meaning_mutants_of(source, vocabulary):
    """Returns all such mutants of the source, sorted by place."""
    found = []
    constants = constants_of(source)
    for index in range(len(source.tokens)):
        if not is_excluded(source, index):
            found += enumerators(source, index, vocabulary)
            found += other_constants(source, index, constants)
            found += texts(source, index)
            found += calls(source, index)
            found += exchanged(source, index)
            found += captures(source, index)
            found += copies(source, index)
            found += copied_members(source, index, vocabulary)
    unique = {mutant.text: mutant for mutant in reversed(found) if mutant.text != source.text}
    return sorted(unique.values(), key=lambda mutant: mutant.place)


def replaced(source, first, last, name, text):
    """Returns the mutant with another text for the tokens [first, last)."""
    return [MeaningMutant(source, source.tokens[first].start, source.tokens[last - 1].end, name, text)]


def enumerators(source, index, vocabulary):
    """Another enumerator of the same enumeration: the next one, and the one before."""
    token = source.tokens[index]
    if token.kind != "word" or source.text_at(index + 1) in ("::", "("):
        return []
    qualifier = source.text_at(index - 2) if source.text_at(index - 1) == "::" else ""
    if source.text_at(index - 1) in (".", "->") or not qualifier and not is_value(source, index):
        return []
    names = vocabulary.family(qualifier, token.text, source.path)
    if not names or is_case_label(source, index):
        return []
    place = names.index(token.text)
    return (replaced(source, index, index + 1, "next-enumerator", names[(place + 1) % len(names)]) +
            replaced(source, index, index + 1, "previous-enumerator", names[place - 1]))


def is_value(source, index):
    """Returns whether the token is used in an expression, and not defined as an enumerator."""
    parent = source.tokens[index].parent
    return parent is not None and "enum" not in [source.text_at(place) for place in range(max(0, parent - 6), parent)]


def is_case_label(source, index):
    while source.text_at(index - 1) == "::":
        index -= 2
    return source.text_at(index - 1) == "case"


def constants_of(source):
    """Returns the constants outside functions: their names by type, and the indices of their definitions."""
    result = {}
    for index, token in enumerate(source.tokens):
        if token.text == "constexpr" and not source.is_in_code(index):
            if source.text_at(index + 3) in ("=", "(", "{") and source.tokens[index + 2].kind == "word":
                result.setdefault(source.text_at(index + 1), {})[source.text_at(index + 2)] = index + 2
    return result


def other_constants(source, index, constants):
    """The next constant of the same type in the file."""
    text = source.text_at(index)
    for places in constants.values():
        names = list(places)
        if len(names) > 1 and text in names and places[text] != index and \
                source.text_at(index - 1) not in (".", "->", "::"):
            return replaced(source, index, index + 1, "other-constant", names[(names.index(text) + 1) % len(names)])
    return []


def called_function(source, index):
    """Returns the index of the name of the function whose argument list the token is in, or None."""
    parent = source.tokens[index].parent
    if parent is None or source.text_at(parent) != "(" or source.tokens[parent - 1].kind != "word":
        return None
    return parent - 1


def texts(source, index):
    """Another text for the user: with another last letter."""
    token = source.tokens[index]
    if token.kind != "string" or source.text_at(index - 1) == "extern":
        return []
    function = called_function(source, index)
    name = source.text_at(function) if function is not None else ""
    position = len([place for place in range(function + 2, index) if source.text_at(place) == ","
                    and source.tokens[place].parent == function + 1]) if name else 0
    if position != (1 if name in CONTEXTUAL else 0) and name in CONTEXTUAL | {"tr"}:
        return []
    names = {name}
    while function is not None and name in LITERAL_WRAPPERS:
        function = called_function(source, function)
        name = source.text_at(function) if function is not None else ""
        names.add(name)
    if names & INTERNAL_TEXT or re.search(r"/%1", token.text):
        return []
    first = token.text.index('"') + 1
    last = token.text.rindex('"')
    text = token.text[first:last]
    letters = NO_LETTER.sub(lambda found: " " * len(found.group()), text)
    places = [place for place, letter in enumerate(letters) if letter.isascii() and letter.isalpha()]
    if places:
        place = places[-1]
        changed = text[:place] + {"z": "y", "Z": "Y"}.get(text[place], chr(ord(text[place]) + 1)) + text[place + 1:]
    elif letters.strip() and letters[-1] != " " and not letters[-1].isdigit():
        changed = text[:-1] + ("-" if text[-1] != "-" else ".")
    else:
        return []
    return replaced(source, index, index + 1, "other-text", token.text[:first] + changed + token.text[last:])


def calls(source, index):
    """A call left out that changes a value: its object or its first argument remains."""
    token = source.tokens[index]
    if token.kind != "word" or source.text_at(index + 1) != "(" or not source.is_in_code(index):
        return []
    opening, closing = index + 1, source.tokens[index + 1].match
    before = source.text_at(index - 1)
    if before in (".", "->"):
        return replaced(source, index - 1, closing + 1, "without-call", "") \
            if before == "." and SAME_TYPE_METHOD.fullmatch(token.text) else []
    first = index
    if before == "::":
        if source.text_at(index - 2) != "std":
            return []
        first = index - 2
    elif source.tokens[index - 1].kind == "word" and before not in ("return", "co_return"):
        return []
    if not SAME_TYPE_FUNCTION.fullmatch(token.text) or closing == opening + 1:
        return []
    commas = [place for place in source.siblings(opening + 1, closing, opening) if source.text_at(place) == ","]
    argument = source.slice(opening + 1, commas[0] if commas else closing)
    return replaced(source, first, closing + 1, "first-argument", f"({argument})")


def statement_at(source, index):
    """Returns the index after the expression statement that starts here, or None if there is none."""
    if index >= len(source.tokens) or not source.starts_statement(index) or source.text_at(index) in JUMPS:
        return None
    end = source.statement_end(index)
    if end is None or not is_removable(source, index, end):
        return None
    return end + 1


def variables(source, first, last):
    """Returns the names of variables in the tokens [first, last)."""
    return {source.text_at(place) for place in range(first, last)
            if source.tokens[place].kind == "word" and source.text_at(place + 1) not in ("(", "::")
            and source.text_at(place - 1) != "::" and source.text_at(place)[0].islower()
            and source.text_at(place) not in ("this", "true", "false", "nullptr")}


def changed_variables(source, first, last):
    """Returns the variables that a statement may change: the object of its call, or all if it has none."""
    is_call_of_object = source.tokens[first].kind == "word" and source.text_at(first + 1) in (".", "->")
    return {source.text_at(first)} if is_call_of_object else variables(source, first, last)


def is_exchangeable(source, first, middle, last):
    """Returns whether the order of two statements may matter: they share a variable, and are not both settings."""
    statements = [(first, middle), (middle, last)]
    for (start, end), (other_start, other_end) in (statements, statements[::-1]):
        for place in source.siblings(start, end, source.tokens[start].parent):
            if source.text_at(place) in ASSIGNMENTS:
                # An assignment matters to what reads its variable. Without a new object the program would just crash.
                return source.slice(start, place) in source.slice(other_start, other_end) and \
                    source.text_at(place + 1) != "new"
    methods = []
    for start, end in statements:
        opening = next((place for place in range(start, end) if source.text_at(place) == "("), None)
        methods.append(source.text_at(opening - 1) if opening is not None else "")
    verbs = {re.match(r"[a-z]*", method).group() for method in methods}
    if "connect" in verbs or verbs <= {"set"} or verbs == {"set", "add"}:
        return False
    written = changed_variables(source, first, middle) | changed_variables(source, middle, last)
    return bool(variables(source, first, middle) & variables(source, middle, last) & written)


def exchanged(source, index):
    """Two neighbouring statements in the other order."""
    middle = statement_at(source, index)
    last = middle and statement_at(source, middle)
    if not last or source.tokens[middle].parent != source.tokens[index].parent or \
            not is_exchangeable(source, index, middle, last):
        return []
    one, other = source.slice(index, middle), source.slice(middle, last)
    return replaced(source, index, last, "exchanged", f"{other} {one}")


def is_run_later(source, index):
    """Returns whether the lambda that starts here runs later: it is passed on to such a function, or as a variable."""
    function = called_function(source, index)
    if function is not None:
        return source.text_at(function) in LATER
    if source.text_at(index - 1) != "=":
        return False
    name = source.text_at(index - 2)
    return any(source.text_at(place) == name and source.text_at(place + 1) in (",", ")")
               for place in range(source.tokens[index].match, len(source.tokens)))


def captures(source, index):
    """A capture by reference instead of by value, in a lambda that runs later."""
    token = source.tokens[index]
    parent = token.parent
    if token.kind != "word" or token.text == "this" or parent is None or source.text_at(parent) != "[" or \
            source.text_at(source.tokens[parent].match + 1) not in ("(", "{") or \
            source.text_at(index - 1) not in ("[", ",") or not is_run_later(source, parent):
        return []
    if source.text_at(index + 1) in (",", "]"):
        return replaced(source, index, index + 1, "by-reference", "&" + token.text)
    last = index + 2
    while source.text_at(last) != "]" and not (source.text_at(last) == "," and source.tokens[last].parent == parent):
        last += 1
    expression = source.slice(index + 2, last)
    moved = re.fullmatch(r"std::move\((\w+)\)", expression)
    return replaced(source, index, last, "by-reference", f"&{token.text} = {moved[1] if moved else expression}")


def copies(source, index):
    """A reference instead of a local copy of a member; a view is a reference already."""
    if source.text_at(index) != "const" or not source.starts_statement(index):
        return []
    last = source.statement_end(index)
    places = source.siblings(index, last, source.tokens[index].parent) if last else []
    equals = next((place for place in places if source.text_at(place) == "="), None)
    if equals is None or source.text_at(equals - 2) in ("*", "&", "string_view"):
        return []
    value = source.slice(equals + 1, last)
    if not re.fullmatch(r"\*?\w+(?:(?:\.|->)\w+)*", value) or not re.search(r"_$|\.|->", value):
        return []
    return replaced(source, equals - 1, equals, "by-reference", "&" + source.text_at(equals - 1))


def copied_members(source, index, vocabulary):
    """A reference to the constructor's parameter instead of a member that has its value."""
    token = source.tokens[index]
    parent = token.parent
    if token.text not in vocabulary.copied_members.get(stem(source.path), ()) or source.text_at(index + 1) != ";" or \
            parent is None or source.tokens[parent].block != "type" or source.text_at(index - 1) in ("*", "&"):
        return []
    first = index
    while source.text_at(first - 1) not in (";", "{", "}", ":"):
        first -= 1
    kind = source.slice(first, index)
    if vocabulary.is_enumeration(source.text_at(index - 1)) or not re.search(r"[A-Z]|std::(?!u?int|size_t)", kind):
        return []
    return replaced(source, first, index + 1, "by-reference", f"const {kind}& {token.text}")
