"""A tokenised C++ source with its bracket structure: just enough parsing for the mutation operators."""

import re

KEYWORDS = {"return", "co_return", "co_await", "co_yield", "throw", "case", "else", "do", "new", "delete"}
CONTROL = {"if", "while", "for", "switch", "catch"}

TOKEN = re.compile(
    r"""
    (?P<skip>\s+|//[^\n]*|/\*.*?\*/|(?:^|(?<=\n))[ \t]*\#(?:\\\n|[^\n])*)
  | (?P<raw>\w*R"(?P<fence>[^(\s]*)\(.*?\)(?P=fence)"\w*)
  | (?P<string>(?:u8|u|U|L)?"(?:\\.|[^"\\\n])*"\w*)
  | (?P<char>(?:u8|u|U|L)?'(?:\\[^\n][^'\n]*|[^'\\\n])')
  | (?P<number>\.?\d(?:'?[\w.]|(?<=[eEpP])[+-])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<punctuator><<=|>>=|<=>|->\*|\.\.\.|::|->|\+\+|--|<<|>>|[<>=!+\-*/%&|^]=|&&|\|\||.)
    """,
    re.VERBOSE | re.DOTALL,
)
OPENING = {")": "(", "]": "[", "}": "{"}


class Token:
    def __init__(self, kind, text, start):
        self.kind = kind
        self.text = text
        self.start = start
        self.end = start + len(text)
        # Index of the innermost opening bracket around this token, or None.
        self.parent = None
        # For brackets, the index of the matching one.
        self.match = None
        # For "{": "namespace", "type", "function", "lambda", "block" or "values".
        self.block = None


class Source:
    def __init__(self, path, text):
        self.path = path
        self.text = text
        self.tokens = list(self._tokenise())
        self._match_brackets()
        for index, token in enumerate(self.tokens):
            if token.text == "{":
                token.block = self._kind_of_block(index)

    def _tokenise(self):
        position = 0
        while position < len(self.text):
            found = TOKEN.match(self.text, position)
            position = found.end()
            if found.lastgroup != "skip":
                kind = "string" if found.lastgroup in ("raw", "fence") else found.lastgroup
                yield Token(kind, found.group(), found.start())

    def _match_brackets(self):
        opened = []
        for index, token in enumerate(self.tokens):
            if token.kind == "punctuator" and token.text in OPENING:
                start = opened.pop()
                if self.tokens[start].text != OPENING[token.text]:
                    raise ValueError(f"{self.path}: mismatched bracket at offset {token.start}")
                self.tokens[start].match = index
                token.match = start
            token.parent = opened[-1] if opened else None
            if token.kind == "punctuator" and token.text in OPENING.values():
                opened.append(index)
        if opened:
            raise ValueError(f"{self.path}: unclosed bracket")

    def text_at(self, index):
        """Returns the token's text, or "" if the index is out of range."""
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def _head(self, index):
        """Returns the index of the first token of the declaration or statement before the "{"."""
        parent = self.tokens[index].parent
        start = index
        while start > 0:
            before = self.tokens[start - 1]
            if before.text in (")", "]") or (before.text == "}" and not self._ends_statement(start - 1)):
                start = before.match
            elif start - 1 == parent or before.text in (";", "{", "}"):
                break
            else:
                start -= 1
        return start

    def _kind_of_block(self, index):
        before = index - 1
        words = [token.text for token in self.tokens[self._head(index):index]]
        parent = self.tokens[index].parent
        in_code = parent is not None and self.tokens[parent].block in ("function", "lambda", "block")
        if "namespace" in words and "using" not in words:
            return "namespace"
        if "(" not in words and {"class", "struct", "union", "enum"} & set(words):
            return "type"
        if "->" in words[-6:] and self.text_at(before) not in (")", "]"):
            while self.text_at(before) != "->":
                before -= 1
            before -= 1
        while self.text_at(before) in ("const", "noexcept", "override", "final", "mutable"):
            before -= 1
        if self.text_at(before) == "]":
            return "lambda"
        if self.text_at(before) == ")":
            start = self.tokens[before].match
            if self.text_at(start - 1) == "]":
                return "lambda"
            return "block" if in_code or self.text_at(start - 1) in CONTROL else "function"
        if in_code and (not words or words[-1] in ("else", "do", "try", ":")):
            return "block"
        return "values"

    def _ends_statement(self, index):
        """Returns whether the "}" ends a statement or a declaration, not an initialiser or a lambda."""
        return self.tokens[self.tokens[index].match].block not in ("values", "lambda")

    def enclosing(self, index, blocks):
        """Returns the index of the innermost "{" around the token whose block is one of `blocks`, or None."""
        parent = self.tokens[index].parent
        while parent is not None and self.tokens[parent].block not in blocks:
            parent = self.tokens[parent].parent
        return parent

    def is_in_code(self, index):
        return self.enclosing(index, ("function", "lambda")) is not None

    def starts_statement(self, index):
        parent = self.tokens[index].parent
        if parent is None or self.tokens[parent].block not in ("function", "lambda", "block"):
            return False
        before = index - 1
        if before == parent or self.text_at(before) in (";", "else", "do"):
            return True
        return (self.text_at(before) == "}" and self._ends_statement(before)) or (
            self.text_at(before) == ":" and self._is_label(before))

    def _is_label(self, index):
        while index > 0 and self.text_at(index) not in (";", "{", "}", "case", "default", "?"):
            index -= 1
        return self.text_at(index) in ("case", "default")

    def statement_end(self, index):
        """Returns the index of the ";" that ends the statement at `index`, or None."""
        parent = self.tokens[index].parent
        while index < len(self.tokens) and self.text_at(index) != "}":
            token = self.tokens[index]
            if token.text == ";" and token.parent == parent:
                return index
            index = token.match + 1 if token.text in OPENING.values() else index + 1
        return None

    def is_spaced(self, index):
        """Returns whether the token has white space on both sides, as binary operators do."""
        token = self.tokens[index]
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()

    def siblings(self, first, last, parent):
        """Returns the indices in [first, last) of the tokens directly inside the bracket `parent`."""
        return [index for index in range(first, last) if self.tokens[index].parent == parent]

    def slice(self, first, last):
        """Returns the text of the tokens [first, last)."""
        return self.text[self.tokens[first].start:self.tokens[last - 1].end] if last > first else ""
