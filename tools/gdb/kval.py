"""A gdb pretty-printer for values: 40'h12345ABCDE, 8'bX01XX01X (X), 16'hZZZZ (Z), and signed 8'hFF (-1).

gdb loads it with libkval.so, as that file's "-gdb.py". It reads the fields that include/kval.h declares, by the debug
information of the program and out of its memory: neither the library's symbols nor a call into it is needed. Tests are
in tests/gdb, and docs/debugging.md tells users what they see.
"""

import gdb
import gdb.printing
import gdb.types

WIDEST = 2**31 - 32
WIDEST_IN_BINARY = 64  # with X bits; wider ones are printed in hexadecimal
WIDEST_IN_DECIMAL = 64

# The bits of the field `flags`, most telling first: what is said of them, and the digit that they make of a known one.
FLAGS = ((1, "X", None), (2, "Z", "Z"), (4, "weak low", "L"), (8, "weak high", "H"))
ALL_FLAGS = 31  # with the one that says which text is cached


class NotAValue(Exception):
    """The fields contradict each other: memory that holds no value yet, or no longer."""


def digit_limit():
    """How many digits to print of one value: the limit of `set print elements`."""
    if hasattr(gdb, "print_options"):
        limit = gdb.print_options()["max_elements"]
    else:
        limit = gdb.parameter("print elements")
    return limit or WIDEST


def with_x(digits, mask_digits, known_digit):
    """The digits, "X" for those with an X bit, and `known_digit`, unless it is None, for the others."""
    if known_digit is not None:
        digits = known_digit * len(digits)
    return "".join(digit if mask == "0" else "X" for digit, mask in zip(digits, mask_digits))


class Value:
    """One value: the fields, and whatever is read from behind them."""

    def __init__(self, fields):
        self.fields = fields
        self.width = int(fields["width"])
        self.flags = int(fields["flags"])
        self.capacity = int(fields["capacity"])

    def is_large(self):
        """Whether the bits are in arrays, not in the object."""
        return self.width > 64

    def is_moved_from(self):
        return (self.width, self.flags, self.capacity) == (0, 0, 0)

    def check(self):
        """Raises NotAValue for what no value is ever like."""
        words = (self.width + 31) // 32
        if not 0 < self.width <= WIDEST:
            raise NotAValue(f"width {self.width}")
        if self.flags > ALL_FLAGS:
            raise NotAValue(f"flags 0x{self.flags:X}")
        if self.is_large() and self.capacity == 0:
            raise NotAValue(f"{self.width} bits, released")
        if self.capacity < words if self.is_large() else self.capacity != 0:
            raise NotAValue(f"{self.width} bits in arrays of {self.capacity} words")

    def bits(self, plane, low, high):
        """The bits `low` to `high` - 1 of the plane "uvalue" or "xmask", as a number."""
        if self.is_large():
            number = self.words(plane, low // 32, (high + 31) // 32) >> low % 32
        else:
            number = int(self.fields[plane]["bits"]) >> low
        return number & (1 << high - low) - 1

    def words(self, plane, first, end):
        """The words `first` to `end` - 1 of a large value's plane, as a number."""
        address = int(self.fields[plane]["words"])
        try:
            memory = gdb.selected_inferior().read_memory(address + 4 * first, 4 * (end - first))
        except gdb.MemoryError:
            raise NotAValue(f"{self.width} bits at 0x{address:x}, which cannot be read") from None
        return int.from_bytes(memory, "little")

    def digits(self, first, count, bits_a_digit):
        """`count` digits, the rightmost of them being digit `first` from the right."""
        low = first * bits_a_digit
        high = min(low + count * bits_a_digit, self.width)
        form = f"0{count}{'b' if bits_a_digit == 1 else 'X'}"
        known_digit = next((digit for flag, _, digit in FLAGS if digit and self.flags & flag), None)
        digits, mask_digits = (format(self.bits(plane, low, high), form) for plane in ("uvalue", "xmask"))
        return with_x(digits, mask_digits, known_digit)

    def verilog(self):
        """The value as Verilog spells it. One with more digits than the limit shows both of its ends."""
        in_binary = self.width <= WIDEST_IN_BINARY and self.has_x()
        bits_a_digit = 1 if in_binary else 4
        count = -(-self.width // bits_a_digit)
        limit = digit_limit()
        if count <= limit:
            text = self.digits(0, count, bits_a_digit)
        else:
            right = limit // 2
            left = limit - right
            text = self.digits(count - left, left, bits_a_digit) + "..."
            text += self.digits(0, right, bits_a_digit) if right else ""
        return f"{self.width}'{'b' if in_binary else 'h'}{text}"

    def has_x(self):
        return self.bits("xmask", 0, self.width) != 0

    def notes(self):
        return ", ".join(note for flag, note, _ in FLAGS if self.flags & flag)

    def decimal(self):
        """The signed reading; none for a value that equals no number, or is too wide to be read at a glance."""
        if self.width > WIDEST_IN_DECIMAL or self.notes() or self.has_x():
            return ""
        number = self.bits("uvalue", 0, self.width)
        return str(number - (number >> self.width - 1 << self.width))


class UnsignedPrinter:
    """Prints a KVAL_UINTEGER."""

    signed = False

    def __init__(self, fields):
        self.fields = fields

    def to_string(self):
        if not gdb.types.has_field(gdb.types.get_basic_type(self.fields.type), "width"):
            return "<incomplete type: clang++ describes it with -fstandalone-debug>"
        try:
            return self.text(Value(self.fields))
        except NotAValue as reason:
            return f"<not a valid value: {reason}>"
        except gdb.MemoryError:
            raise
        except gdb.error:
            return "<partly optimized out: print/r shows what is left>"

    def text(self, value):
        if value.is_moved_from():
            return "<moved-from>"
        value.check()
        note = value.notes() or (value.decimal() if self.signed else "")
        return f"{value.verilog()} ({note})" if note else value.verilog()


class SignedPrinter(UnsignedPrinter):
    """Prints a KVAL_SINTEGER."""

    signed = True


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("kval")
    collection.add_printer("KVAL_UINTEGER", "^KVAL_UINTEGER$", UnsignedPrinter)
    collection.add_printer("KVAL_SINTEGER", "^KVAL_SINTEGER$", SignedPrinter)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
