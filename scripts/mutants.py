"""Mutants of C++ sources: single small changes, and all of them at once in one source that chooses when it runs.

Every function body is repeated for each of its mutants: `switch (kval_mutant) { case 7: {mutated body} break; default:
{body} }`. Initialisers outside of function bodies become a chain of `?:`.

What is binary and what is unary is read off the blanks, which clang-format sets: `a & b` is an operator, `T& b` is not.
"""
import dataclasses
import re

# Named where the language wants a constant: the bound of an array.
COMPILE_TIME = {"kTypes", "kFew", "kRows", "kShort", "kPairs", "kLongestPair"}

SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&", "&": "|",
         "|": "&", "^": "|", "+": "-", "-": "+", "*": "+", "/": "*", "%": "*", "<<": ">>", ">>": "<<", "+=": "-=",
         "-=": "+=", "&=": "|=", "|=": "&=", "^=": "|=", "<<=": ">>=", ">>=": "<<="}
EVERYWHERE = {"++": "--", "--": "++", "true": "false", "false": "true", "!": "", "~": ""}
PAIRS = {"(": ")", "[": "]", "{": "}"}

# Set before every other initialisation of the library.
CHOICE = """
#include <cstdlib>
int kval_mutant = 0;
__attribute__((constructor(101))) static void choose_mutant() {
    const char* id = std::getenv("KVAL_MUTANT");
    if (id != nullptr) kval_mutant = std::atoi(id);
}
"""

TOKEN = re.compile(r"""
      (?P<skip>\s+ | //[^\n]* | /\*.*?\*/ | ^[ ]*\#(?:[^\n]*\\\n)*[^\n]*)
    | (?P<text>"(?:\\.|[^"\\])*" | '(?:\\.|[^'\\])+')
    | (?P<number>0[xX][0-9a-fA-F]+[uUlL]* | [0-9]+[uUlL]*)
    | (?P<name>\w+)
    | (?P<sign><<= | >>= | -> | \+\+ | -- | && | \|\| | :: | << | >> | [-+*/%&|^<>=!]= | .)
    """, re.VERBOSE | re.DOTALL | re.MULTILINE)
# A statement that declares a variable, or that steers the run; any other one may be dropped.
KEPT = re.compile(r"(?:return|throw|using|static|const|case|default|else|if|for|while|do|switch|break|delete)\b(?!\[)"
                  r"|[\w:]+(?:<.*?>)?[&*]* \w+(?:\[\w+\])?(?: =\s|;|\(|\{)")


@dataclasses.dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclasses.dataclass
class Mutant:
    id: int
    file: str
    line: int
    text: str  # the source line
    change: str
    start: int  # what is replaced, as offsets into the file
    end: int
    replacement: str
    first: int = 0  # the lines of its variant in the changed file
    last: int = 0

    def key(self):
        return (self.file, self.text, self.change)

    def describe(self):
        return f"{self.id:5} {self.file}:{self.line}: {self.change}: {self.text}"


class Source:
    """The tokens of a file, and the regions in which it may change: function bodies and initialisers."""

    def __init__(self, name, code):
        self.name = name
        self.code = code
        self.tokens = [Token(m.lastgroup, m[0], m.start(), m.end())
                       for m in TOKEN.finditer(self.code) if m.lastgroup != "skip"]
        self.close = {}  # of every opening bracket, by their indices
        self.opener = []  # of every token, the index of the bracket that it is in
        self.match_brackets()
        self.regions = []  # (kind, first token, token behind the last, first token of the declaration)
        self.find_regions()

    def match_brackets(self):
        open_ones = [None]
        for i, token in enumerate(self.tokens):
            if token.text in PAIRS.values():
                self.close[open_ones.pop()] = i
            self.opener.append(open_ones[-1])
            if token.text in PAIRS:
                open_ones.append(i)

    def texts(self, first, last):
        return [token.text for token in self.tokens[first:last]]

    def until(self, first, stops):
        """The first token from `first` on, outside of brackets, that is one of `stops` or closes a bracket."""
        i = first
        while self.tokens[i].text not in stops and self.tokens[i].text not in PAIRS.values():
            i = self.close.get(i, i) + 1
        return i

    def find_regions(self):
        i = begin = 0
        while i < len(self.tokens):
            text = self.tokens[i].text
            head = self.texts(begin, i)
            if text in (";", "}"):
                begin = i + 1
            elif text in ("(", "["):
                i = self.close[i]
            elif text == "=" and head[-1] != "operator" and not {"using", "enum"} & set(head):
                if self.tokens[i + 1].text != "{":
                    end = self.until(i + 1, ";")
                    if head[-1] not in COMPILE_TIME:
                        self.regions.append(("value", i + 1, end, begin))
                    i = end - 1
            elif text == "{" and "enum" in head:
                i = self.close[i]
            elif text == "{" and "(" in head:
                self.add_member_initialisers(begin, i)
                self.regions.append(("body", i, self.close[i] + 1, begin))
                i = self.close[i]
                begin = i + 1
            elif text == "{" and {"namespace", "class", "struct", "union"} & set(head):
                begin = i + 1
            elif text == "{":
                self.add_elements(i, begin)
                i = self.close[i]
            i += 1

    def add_member_initialisers(self, begin, body):
        i = self.until(begin, "(")
        while i < body:
            i = self.close.get(i, i) + 1
            if self.tokens[i].text == "(" and ":" in self.texts(begin, i):
                self.add_elements(i, begin)

    def add_elements(self, bracket, begin):
        i = bracket + 1
        while i < self.close[bracket]:
            end = self.until(i, ",")
            self.regions.append(("value", i, end, begin))
            i = end + 1

    def changes(self, region):
        """Yields (start, end, replacement, change) for every mutant of a region."""
        kind, first, last, _ = region
        for i in range(first, last):
            token, before = self.tokens[i], self.tokens[i - 1]
            blanks = self.code[token.start - 1].isspace() + self.code[token.end].isspace()
            new = EVERYWHERE.get(token.text, SWAPS.get(token.text) if blanks == 2 else None)
            if token.text == "-" and blanks < 2 and self.tokens[i + 1].kind == "number":
                new = ""
            if token.kind == "number":
                new = incremented(token.text)
            if new is not None:
                yield token.start, token.end, new, f"`{token.text}` to `{new}`" if new else f"`{token.text}` dropped"
            if token.text == "?":
                yield self.swapped_arms(i)
            if token.text == "(" and before.text in ("if", "while"):
                inside = (token.end, self.tokens[self.close[i]].start)
                yield (*inside, "false", "condition false")
                if before.text == "if":
                    yield (*inside, "true", "condition true")
            if kind == "body" and self.starts_statement(i):
                end = self.until(i, ";")
                if self.tokens[end].text == ";" and not KEPT.match(self.code[token.start:self.tokens[end].end]):
                    yield token.start, self.tokens[end].start, "", "statement dropped"

    def starts_statement(self, i):
        token = self.tokens[i]
        if token.kind != "name" and token.text not in ("++", "--") or self.tokens[self.opener[i]].text != "{":
            return False
        before = self.tokens[i - 1].text
        if before == ")":
            opened = next(o for o, c in self.close.items() if c == i - 1)
            return self.tokens[opened - 1].text in ("if", "for", "while")
        return before in (";", "{", "}", "else")

    def swapped_arms(self, question):
        colon = self.until(question + 1, ":?")
        while self.tokens[colon].text == "?":
            colon = self.until(self.until(colon + 1, ":") + 1, ":?")
        end = self.until(colon + 1, ",;")
        arms = [self.code[self.tokens[a].start:self.tokens[b - 1].end]
                for a, b in ((question + 1, colon), (colon + 1, end))]
        return self.tokens[question + 1].start, self.tokens[end - 1].end, f"{arms[1]} : {arms[0]}", "arms swapped"

    def mutants(self, next_id):
        lines = self.code.split("\n")
        seen = {}
        found = []
        for region in self.regions:
            for start, end, replacement, change in self.changes(region):
                line = self.code.count("\n", 0, start)
                text = lines[line].strip()
                copy = seen[text, change] = seen.get((text, change), 0) + 1
                change += f" (copy {copy})" if copy > 1 else ""
                found.append(Mutant(next_id + len(found), self.name, line + 1, text, change, start, end, replacement))
        return found

    def with_mutants(self, mutants):
        """The text of the file with these mutants in it; sets the lines of each."""
        out = 'extern __attribute__((visibility("default"))) int kval_mutant;\n'
        done = 0
        for kind, first, last, begin in self.regions:
            start, end = self.tokens[first].start, self.tokens[last - 1].end
            own = [m for m in mutants if start <= m.start and m.end <= end]
            if not own:
                continue
            head = self.tokens[begin].start
            if head >= done:  # what has mutants in it is not constant
                out += self.code[done:head]
                out += re.sub(r"\bconst(?:expr|eval)\b", "const" if kind == "value" else "", self.code[head:start])
            else:
                out += self.code[done:start]
            out += "{ switch (kval_mutant) {\n" if kind == "body" else "("
            for m in own:
                variant = self.code[start:m.start] + m.replacement + self.code[m.end:end]
                m.first = out.count("\n") + 1
                out += f"case {m.id}: {variant} break;" if kind == "body" else f"kval_mutant == {m.id} ? ({variant}) :"
                m.last = out.count("\n") + 1
                out += "\n"
            out += f"default: {self.code[start:end]}\n}} }}" if kind == "body" else f"({self.code[start:end]}))"
            done = end
        out = (out + self.code[done:]).replace("constinit ", "")
        return re.sub(r'\bstatic_assert\((?:[^;"]|"[^"]*")*;', "", out)


def incremented(number):
    digits, suffix = re.fullmatch(r"(0[xX][0-9a-fA-F]+|[0-9]+)([uUlL]*)", number).groups()
    value = int(digits, 0) + 1
    return (f"0x{value:X}" if digits[:2].lower() == "0x" else str(value)) + suffix
