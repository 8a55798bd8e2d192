# Reads what objdump -dr prints of one object file, and prints what the loops of one function do that values in
# registers do not need:  awk -v function_name=NAME -f offences.awk. A line "call FUNCTION" or "store INSTRUCTION" for
# each, and at last "loops COUNT", how many instructions are in loops.
#
# A loop is what is on some way from the target of a backward jump back to it, wherever the compiler has put it.

# lead FROM TO: the instruction at place FROM may be followed by the one at TO.
function lead(from, to) {
    after[from] = after[from] " " to
    before[to] = before[to] " " from
}

# Marks in `seen` every place that is reached from `start` along `ways`, `start` itself only by a way back.
function reach(start, ways, seen,    stack, top, count, places, i) {
    stack[top = 1] = start
    while (top > 0) {
        count = split(ways[stack[top--]], places, " ")
        for (i = 1; i <= count; ++i) {
            if (places[i] in seen) continue
            seen[places[i]] = 1
            stack[++top] = places[i]
        }
    }
}

# Whether the instruction writes to memory: its last operand is the destination, and memory is what is neither a
# register nor a number. Some only read what stands there.
function stores(text,    name, operand) {
    sub(/^((lock|rep|repz|repnz|data16|cs|notrack|bnd) +)+/, "", text)
    sub(/ *[#<].*/, "", text)
    name = operand = text
    sub(/ .*/, "", name)
    if (name ~ /^push/) return 1
    if (name ~ /^(j.*|call.*|(cmp|test|bt|mul|imul|div|idiv|nop)[bwlq]?|prefetch.*)$/ || text !~ / /) return 0
    sub(/^[^ ]* +/, "", operand)
    if (operand ~ /\)$/) return 1
    sub(/.*,/, "", operand)
    return operand !~ /^(\$|%[a-z0-9]+$)/
}

/>:$/ { inside = $2 == "<" function_name ">:" }
inside && /^ *[0-9a-f]+:\t/ {
    address = $1
    sub(/:$/, "", address)
    place[address] = ++size
    sub(/^[^\t]*\t/, "")
    sub(/ +$/, "")
    instruction[size] = $0
}
# The linker fills in an address: of what is called, of a constant.
inside && /^\t+[0-9a-f]+: R_/ {
    sub(/^[^R]*R_[^\t]*\t/, "")
    sub(/(\(.*)?[-+]0x[0-9a-f]+$/, "")
    symbol[size] = $0
}

END {
    for (i = 1; i <= size; ++i) {
        $0 = instruction[i]
        sub(/^(notrack|bnd) +/, "")
        if (/^jmp +\*/) print "call " instruction[i]  # to one of many places, which are not followed
        if (/^j/ && !(i in symbol) && $2 in place) {
            lead(i, place[$2])
            if (place[$2] <= i) backward[place[$2]] = 1
        }
        if (/^(jmp|ret|ud2|hlt)/ || i == size) continue
        # What these call does not return.
        if (i in symbol && symbol[i] ~ /^(_Unwind_Resume|__cxa_throw|__cxa_rethrow|kval::detail::Throw)/) continue
        lead(i, i + 1)
    }
    for (target in backward) {
        split("", there)
        split("", back)
        reach(target, after, there)
        reach(target, before, back)
        for (i in there) if (i in back) looped[i] = 1
    }
    for (i = 1; i <= size; ++i) {
        if (!(i in looped)) continue
        ++count
        if (instruction[i] ~ /^(notrack |bnd )?call/) print "call " (i in symbol ? symbol[i] : instruction[i])
        if (stores(instruction[i])) print "store " instruction[i]
    }
    print "loops " count + 0
}
