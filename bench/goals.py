"""The goals: what an operation may cost, as a multiple of what another way of doing it costs in the same run."""
from dataclasses import dataclass

# The columns of the table, by the width of the result in bits.
UP_TO_32 = ("up to 32 bits", 1, 32)
UP_TO_64 = ("33 to 64", 33, 64)
UP_TO_256 = ("65 to 256", 65, 256)
THOUSANDS = ("1024, 4096", 900, 4200)
WIDE = ("65536", 60000, 70000)
MILLION = ("a million", 1000000, 2200000)
COLUMNS = [UP_TO_32, UP_TO_64, UP_TO_256, THOUSANDS, WIDE, MILLION]

NEW_VALUES = ["construct", "copy", "logic_and", "logic_or", "logic_xor", "logic_not", "shift_right", "shift_left"]
SHIFTS = ["shift_right", "shift_left"]
SUMS = ["add", "subtract"]
IN_PLACE = ["and_assign", "or_assign", "add_assign", "subtract_assign", "shift_left_assign", "shift_right_assign",
            "increment", "decrement", "assign", "assign_number"]
COMPARISONS = ["less", "equal"]
TEXTS = ["hexadecimal_text", "binary_text"]
PARSERS = ["parse_hexadecimal", "parse_binary"]

# A reference that is the better of several rivals.
FOUR_STATE = ("4-state", ["apint_pair", "systemc"])

SIGNED_ALLOWANCE = 1.3  # of the unsigned figure
X_ALLOWANCE = {"hexadecimal_text": 6.0}  # with X bits, of the figure without
X_ALLOWANCE_ELSE = 1.3
# The least-squares slope on log-log axes, from 4096 to a million bits; linear, if not said otherwise.
GROWTH = {"multiply": 1.6}
GROWTH_ELSE = 1.1


@dataclass
class Goal:
    family: str
    operations: list
    column: tuple
    reference: object  # a rival's name, or the better of several
    factor: float
    least_width: int = 0  # of the result, within the column
    most_width: int = 1 << 40


def row(family, operations, *cells):
    """One family's goals: (column, reference, factor), and perhaps the least and the most width that it speaks of."""
    return [Goal(family, operations, *cell) for cell in cells]


GOALS = [
    *row("new values", NEW_VALUES, (UP_TO_32, "hand", 1.5), (UP_TO_64, "pair2", 0.15), (UP_TO_256, "pair2", 0.25),
         (THOUSANDS, FOUR_STATE, 0.5)),
    *row("new values", [o for o in NEW_VALUES if o not in SHIFTS], (WIDE, "hand", 1.2)),
    *row("new values, shifts", SHIFTS, (WIDE, "hand", 1.3)),
    *row("+ -", SUMS, (UP_TO_32, "hand", 1.5), (UP_TO_64, "pair2", 0.2), (UP_TO_256, "pair2", 0.3),
         (THOUSANDS, FOUR_STATE, 0.5), (THOUSANDS, "mpz", 1.8), (WIDE, "mpz", 1.2)),
    *row("in place", IN_PLACE, (UP_TO_32, "hand", 1.5), (UP_TO_64, "hand", 2.0), (UP_TO_256, "hand", 1.5),
         (THOUSANDS, "hand", 1.2), (WIDE, "hand", 1.2)),
    *row("comparison", COMPARISONS, (UP_TO_32, "hand", 1.5), (UP_TO_64, "hand", 2.0), (UP_TO_256, "hand", 1.5),
         (THOUSANDS, "hand", 1.2), (WIDE, "hand", 1.2)),
    *row("*", ["multiply"], (UP_TO_32, "hand", 1.5), (UP_TO_64, "apint", 0.4), (UP_TO_256, "cpp_int", 1.0, 128),
         (THOUSANDS, "mpz", 1.5), (WIDE, "mpz", 1.5), (MILLION, "mpz", 3.0)),
    *row("text", TEXTS, (UP_TO_32, "mpz", 1.0), (UP_TO_64, "mpz", 0.7), (UP_TO_256, "mpz", 0.6, 65, 128),
         (UP_TO_256, "mpz", 0.4, 129), (THOUSANDS, "mpz", 0.12), (WIDE, "mpz", 0.1)),
    *row("parsing", PARSERS, (UP_TO_32, "mpz", 0.7), (UP_TO_64, "mpz", 0.8), (UP_TO_256, "mpz", 0.5),
         (THOUSANDS, "mpz", 0.25), (WIDE, "mpz", 0.25)),
    *row("signed division", ["signed_divide", "signed_remainder"], (UP_TO_32, "hand", 1.5)),
    *row("generator, a draw", ["draw"], (UP_TO_64, "random", 0.1), (UP_TO_64, "mt19937_64", 0.3)),
    *row("generator, fill", ["random_fill"], (WIDE, "random", 0.07)),
    *row("kernel: counter, compare, multiplexer", ["kernel_counter"], (UP_TO_32, "apint", 0.5)),
    *row("kernel: shift register", ["kernel_shift_register"], (UP_TO_64, "apint_pair", 1.5)),
    *row("kernel: acc += (a & b) ^ c", ["kernel_accumulator"], (UP_TO_256, "cpp_int", 0.8)),
]

# The families that have signed forms, under the operations' names with "signed_" before them.
SIGNED_FAMILIES = ["new values", "new values, shifts", "+ -", "in place", "comparison", "*"]

# What a picture shows: a family, and the operations in it that are drawn.
PICTURES = {
    "new-values": ["copy", "logic_and", "logic_xor", "shift_right", "shift_left"],
    "sums": ["add", "subtract", "signed_add"],
    "in-place": ["and_assign", "add_assign", "shift_left_assign", "assign"],
    "comparison": ["less", "equal"],
    "products": ["multiply"],
    "text": ["hexadecimal_text", "binary_text"],
    "parsing": ["parse_hexadecimal", "parse_binary"],
    "random-fill": ["random_fill"],
}
