# Turns the plain comments of the headers into Doxygen's: those in front of a declaration, those behind it, and the one
# at the head of a file. A comment that heads several declarations without a gap holds for each; a class without one is
# what the head of its file describes; `--- NAME ---` begins a group of members, described by the comment up to the next
# gap.

function say(text) {
    gsub(/\\/, "\\\\", text)
    return text
}

function end_group() {
    if (group_open) print "///@}"
    group_open = 0
    group = ""
}

function begin_group(    i) {
    print "/// @name " group
    for (i = 1; i <= described; i++) print "/// " description[i]
    print "///@{\n"
    group_open = 1
    group = ""
    described = 0
}

# The comment belongs to what follows, or up to a gap in it to the group.
function settle(before_code,    i, gap) {
    gap = before_code ? 0 : comments
    for (i = 1; i <= comments; i++)
        if (comment[i] == "") gap = i
    if (group != "") {
        for (i = 1; i <= gap; i++) description[++described] = comment[i]
        if (before_code) begin_group()
    } else {
        gap = 0
    }
    held = 0
    for (i = gap + 1; i <= comments; i++) {
        print "/// " comment[i]
        hold[++held] = comment[i]
    }
    if (!before_code) held = 0
    comments = 0
}

{ column = match($0, /[^ ]/) }

/^ *\/\/ [-=]+ .* [-=]+$/ {
    settle(0)
    name = $0
    gsub(/^ *\/\/ [-=]+ | [-=]+$/, "", name)
    name = group == "" ? name : group ": " name
    end_group()
    group = name
    next
}

/^ *\/\// {
    text = $0
    sub(/^ *\/\/ ?/, "", text)
    if (column == trailing) print "///< " say(text)
    else comment[++comments] = say(text)
    next
}

# The comment at the head of a file stands in front of its pragma.
/^#pragma once/ {
    print "/// @file"
    for (i = 1; i <= comments; i++) head = head "/// " comment[i] "\n"
    settle(1)
    held = 0
    print
    next
}

/^ *$/ {
    settle(0)
    trailing = 0
    print
    next
}

{
    code = $0
    trailing = match(code, /[^ ] +\/\/ /) ? RSTART + RLENGTH - 3 : 0
    own = trailing && code !~ /^ *[#}]/
    settled = comments > 0
    closes = code ~ /^ *(};?|#|public:|private:|protected:)/
    if (closes && code ~ /^}/) end_group()
    if (!settled && code ~ /^(class|struct) .*{/) printf "%s", head
    if (settled || (group != "" && !closes)) settle(1)
    else if (held && between && !own && !closes && column == first_column && code !~ /~|= delete|operator=\(|&&\) noexcept/)
        for (i = 1; i <= held; i++) print "/// " hold[i]
    if (settled) first_column = column
    if (own || closes || code ~ /^ *(class|struct|enum|namespace|template|friend) /) held = 0
    between = code ~ /[;}]( *\/\/.*)?$/
    if (own) code = substr(code, 1, trailing - 1) "///< " say(substr(code, trailing + 3))
    print code
}
