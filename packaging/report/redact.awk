# redact.awk: prints a session log of ZV Tolvar Setup without the passphrases.
#
#   tr -s '\000' '\001' <zvinstall.log | LC_ALL=C awk -f redact.awk
#
# Works on bytes. A log that two wizards have written, or that a crash has cut, has holes of NUL bytes. Not every awk
# can read these, so 0x01 replaces them. [removed] marks what is removed:
#
# - A passphrase in the messages that are known to contain one ("Password Edit:", "nextId", the command "setpass").
# - From the first "setpass" (or "get_log_file") on, everything that the device sends outside its replies: the device
#   echoes the commands, and the log splits its output at any position. Replies with a known document are kept; the
#   device's own log, which the user saves as a file, is not.
#   The same applies after a hole in the log.
# - Every other occurrence of a passphrase that is anywhere in the log, also in network names, in upper or lower case, in
#   XML notation, or split between two messages. Texts with fewer than five characters are not Wi-Fi keys and are not
#   searched for.
# - Debug messages that are not from the wizard, because Qt's messages can contain what the user types, key by key. Lines
#   that belong to no message.
#
# If the log is long, its beginning and end are printed, and the passphrases found anywhere in it are removed.

BEGIN {
    for (i = 1; i < 256; i++) {
        chr[i] = sprintf("%c", i)
        ord[chr[i]] = i
    }
    failed = length("\303\251") != 2 || length(chr[200]) != 1 || ord["\310"] != 200
    if (failed) {
        print "redact.awk: this awk does not work on bytes" >"/dev/stderr"
        exit 1
    }

    Stx = chr[2]
    Etx = chr[3]
    Gone = chr[1] # replaces one removed byte
    if (!Head)
        Head = 500000 # bytes of messages to print from the beginning of the log
    if (!Tail)
        Tail = 1500000 # and from its end
    LongestMessage = 250000
    LongestLine = 65000
    ShortestValue = 5 # characters
    MostOfAValue = 100 # maximum number of bytes to search for; what follows them is removed as well

    Known = "^(List of ports:|Found!|Not Found|=+|[*]+Device (DISCOVERED|REMOVED):|(port|friendly|physical|enumerator) name:" \
        "|(vendor|product) ID:|_commState = |->|-->|Sysid:|Opening file:|View Details Button Clicked| OK" \
        "|Advanced Button Clicked|Firmware:| Advanced settings accepted|Exiting setup mode|\")"

    sensitive["Password Edit: \""]
    sensitive["nextId \""]
    sensitive["--> \"setpass "]
    type = text = ""
    count = size = headEnd = valueCount = twins = 0
}

# -- Input: messages, and the passphrases in them --

{
    hasHole = gsub(Gone, "")
    if (/^[DWCF]:/ && !(isSensitive() && !closed(text))) {
        endMessage()
        type = substr($0, 1, 1)
        text = substr($0, 3)
    } else if (type != "" && text ~ / $/ && !isSensitive()) {
        # The message was complete. If two wizards write to the log, the rest of a line can follow.
        endMessage()
        text = $0
    } else if (length(text) < LongestMessage) {
        text = text "\n" $0
    }
    if (hasHole)
        holes[count]
}

function isSensitive()
{
    return type == "D" && opening(text) != ""
}

# The beginning of a message that contains a passphrase; empty for any other message.
function opening(message,   start)
{
    for (start in sensitive) {
        if (index(message, start) == 1)
            return start
    }
    return ""
}

# Whether a message with a passphrase is complete. The wizard ends its messages with a space, and a passphrase may
# contain line ends.
function closed(message)
{
    return substr(message, length(message) - 1) == "\" "
}

function endMessage()
{
    if (type == "" && text == "")
        return
    if (isSensitive())
        takeValues(text)
    if (length(text) >= LongestMessage)
        type = text = ""
    types[count] = type
    texts[count] = text
    count++
    size += length(text)
    if (!headEnd && size >= Head) {
        headEnd = count
        tailStart = count
        size = 0
    } else if (headEnd) {
        for (; size > Tail; tailStart++) {
            size -= length(texts[tailStart])
            leftOut += length(texts[tailStart]) + 3
            delete types[tailStart]
            delete texts[tailStart]
        }
    }
    type = ""
    text = ""
}

function takeValues(message,   value, part, n, i)
{
    value = substr(message, length(opening(message)) + 1)
    if (closed(message))
        value = substr(value, 1, length(value) - 2)
    n = split(value, part, /[\r\n]+/)
    for (i = 1; i <= n; i++) {
        takeValue(part[i])
        gsub(/^[ \t]+|[ \t]+$/, "", part[i])
        takeValue(part[i])
    }
}

function takeValue(value,   characters, i)
{
    characters = value
    gsub(/[\200-\277]/, "", characters)
    if (length(characters) < ShortestValue || value in taken)
        return
    taken[value]
    # The longest comes first: if two values begin with the same characters, the longer one is removed as a whole.
    for (i = valueCount++; i > 0 && length(values[i - 1]) < length(value); i--) {
        values[i] = values[i - 1]
        patterns[i] = patterns[i - 1]
    }
    values[i] = value
    patterns[i] = patternFor(substr(value, 1, MostOfAValue)) (length(value) > MostOfAValue ? ".*" : "")
}

# A regular expression for the value in all forms that the log may contain.
function patternFor(value,   pattern, i, c, n, bytes)
{
    for (i = 1; i <= length(value); i += n) {
        c = substr(value, i, 1)
        n = ord[c] < 192 ? 1 : ord[c] < 224 ? 2 : ord[c] < 240 ? 3 : 4
        if (n > 1) {
            bytes = substr(value, i, n)
            pattern = pattern nonAsciiPattern(bytes)
        } else if (c ~ /[A-Za-z]/) {
            pattern = pattern "[" toupper(c) tolower(c) "]"
        } else if (c == " " || c == "\t") {
            pattern = pattern "[ \t]"
        } else if (c == "&") {
            pattern = pattern "(&|&[aA][mM][pP];" reference(38) ")"
        } else if (c == "<") {
            pattern = pattern "(<|&[lL][tT];" reference(60) ")"
        } else if (c == ">") {
            pattern = pattern "(>|&[gG][tT];" reference(62) ")"
        } else if (c == "\"") {
            pattern = pattern "(\"|&[qQ][uU][oO][tT];" reference(34) ")"
        } else if (c == "'") {
            pattern = pattern "('|&[aA][pP][oO][sS];" reference(39) ")"
        } else if (c == "^" || c == "\\") {
            pattern = pattern "\\" c
        } else {
            pattern = pattern "[" c "]"
        }
    }
    return pattern
}

# A non-ASCII character: unchanged; as UTF-8 that the device sent and the log encoded again; as an XML reference; and
# as the '?' that is sent for a character beyond Latin-1.
function nonAsciiPattern(bytes,   i, b, again, code)
{
    for (i = 1; i <= length(bytes); i++) {
        b = ord[substr(bytes, i, 1)]
        again = again (b < 192 ? "\302" chr[b] : "\303" chr[b - 64])
        code = i == 1 ? b % (length(bytes) == 2 ? 32 : length(bytes) == 3 ? 16 : 8) : code * 64 + b % 64
    }
    return "(" bytes "|" again reference(code) (code > 255 ? "|[?]" : "") (code > 65535 ? "|[?][?]" : "") ")"
}

function reference(code,   hex, either, i, c)
{
    hex = sprintf("%x", code)
    for (i = 1; i <= length(hex); i++) {
        c = substr(hex, i, 1)
        either = either "[" toupper(c) c "]"
    }
    return "|&#0*" code ";|&#[xX]0*" either ";"
}

# -- Device output: lines, joined from the messages --
#
# This is done twice. View 1 contains all messages. While two parts of the program read the port, each message is in
# the log twice; view 2 omits the second of two equal messages. What is removed in either view is removed.

# Each message has pieces[view, message], one piece for each line from firstLine[view, message] on.
function joinLines(view,   i, n, part, j, message, at)
{
    at = 1
    for (i = 0; i < count; i++) {
        if ((i == headEnd && leftOut) || i in holes)
            removeFrom(view, at)
        if (types[i] == "D" && index(texts[i], "--> \"") == 1) {
            # Where a command begins, no reply is in progress.
            replyEnds[view, at] = replyEnds[view, at] (length(lines[view, at]) + 1) " "
            if (texts[i] ~ /^--> "(setpass|get_log_file)/)
                removeFrom(view, at)
        }
        if (types[i] == "")
            at++ # part of a line is lost
        if (types[i] != "W" || (view == 2 && i in twinOf))
            continue
        message = texts[i]
        sub(/ $/, "", message)
        n = split(message, part, "\n")
        pieces[view, i] = n ? n : 1
        firstLine[view, i] = at
        for (j = 1; j <= n; j++) {
            if (j > 1)
                at++
            lines[view, at] = lines[view, at] part[j]
            pieceLength[view, i, j] = length(part[j])
        }
    }
    redactLines(view, at)
}

function findTwins(   i, last)
{
    last = -1
    for (i = 0; i < count; i++) {
        if (types[i] != "W")
            continue
        if (last >= 0 && texts[i] == texts[last]) {
            twinOf[i] = last
            twins++
            last = -1
        } else {
            last = i
        }
    }
}

# Sets where the removal begins.
function removeFrom(view, line)
{
    if (!((view, "line") in removal)) {
        removal[view, "line"] = line
        removal[view, "column"] = length(lines[view, line]) + 1
    }
}

function gone(n)
{
    while (length(filler) < n)
        filler = filler Gone Gone Gone Gone Gone Gone Gone Gone Gone Gone
    return substr(filler, 1, n)
}

# Removes from a line, from column start on, what is not in a reply. inReply keeps its value from line to line.
function keepReplies(line, start, ends,   out, end, n, k, mark, stop, c)
{
    out = substr(line, 1, start - 1)
    n = split(ends, end, " ")
    for (k = 1; start <= length(line); ) {
        if (k <= n && end[k] + 0 <= start) {
            inReply = 0
            k++
            continue
        }
        mark = match(substr(line, start), "[" Stx Etx "]") ? start + RSTART - 1 : length(line) + 1
        stop = k <= n && end[k] + 0 < mark ? end[k] + 0 : mark
        if (stop > start) {
            out = out (inReply ? substr(line, start, stop - start) : gone(stop - start))
            start = stop
            continue
        }
        c = substr(line, start, 1)
        out = out c
        start++
        inReply = c == Stx && substr(line, start) ~ /^<([?]xml|puckdata|scan_results|networktest_results)/
    }
    return out
}

# Removes all values from a text; its length does not change.
function hide(message,   i, out)
{
    for (i = 0; i < valueCount; i++) {
        for (out = ""; match(message, patterns[i]); message = substr(message, RSTART + RLENGTH))
            out = out substr(message, 1, RSTART - 1) gone(RLENGTH)
        message = out message
    }
    return message
}

function redactLines(view, lineCount,   i, start, removing, line)
{
    inReply = 0
    for (i = 1; i <= lineCount; i++) {
        line = lines[view, i]
        start = removing ? 1 : i == removal[view, "line"] ? removal[view, "column"] : 0
        # A command that is not in the log because the disk was full.
        if (!removing && match(tolower(line), "setpass") && (!start || RSTART < start))
            start = RSTART
        if (start)
            removing = 1
        if (length(line) > LongestLine) {
            line = gone(length(line))
            inReply = 0
        } else if (start) {
            line = keepReplies(line, start, replyEnds[view, i])
        }
        lines[view, i] = hide(line)
        lineEnd[view, i] = removing && !inReply ? Gone : "\n"
    }
}

# -- Output --

function shown(message)
{
    gsub(Gone "+", "[removed]", message)
    return message
}

# Prints a message. Of several consecutive messages that are removed as a whole, only the first one is printed.
function put(message,   isRemoved)
{
    isRemoved = message ~ /^.:\[removed\] ?$/
    if (!isRemoved || !wasRemoved)
        print message
    wasRemoved = isRemoved
}

function received(view, i,   out, j, line)
{
    for (j = 1; j <= pieces[view, i]; j++) {
        line = firstLine[view, i] + j - 1
        out = out (j > 1 ? lineEnd[view, line - 1] : "") substr(lines[view, line], used[view, line] + 1, pieceLength[view, i, j])
        used[view, line] += pieceLength[view, i, j]
    }
    return out
}

# The bytes that are equal in both texts, which have the same length; the other bytes are removed.
function common(one, other,   out, i, n)
{
    n = 50
    if (one == other)
        return one
    if (length(one) > n) {
        for (i = 1; i <= length(one); i += n)
            out = out common(substr(one, i, n), substr(other, i, n))
        return out
    }
    for (i = 1; i <= length(one); i++)
        out = out (substr(one, i, 1) == substr(other, i, 1) ? substr(one, i, 1) : Gone)
    return out
}

function receivedInBoth(i,   one)
{
    one = received(1, i)
    if (!twins)
        return one
    if (!(i in twinOf))
        second[i] = received(2, i)
    return common(one, i in twinOf ? second[twinOf[i]] : second[i])
}

function redacted(i,   start, value)
{
    if (types[i] == "D") {
        start = opening(texts[i])
        if (start != "") {
            value = substr(texts[i], length(start) + 1)
            return value ~ /^(\r\n)?" $/ ? texts[i] : start "[removed]\" "
        }
        if (texts[i] !~ Known || texts[i] !~ / $/)
            return "[removed]"
    }
    return shown(hide(texts[i]))
}

END {
    if (failed)
        exit 1
    endMessage()
    findTwins()
    joinLines(1)
    if (twins)
        joinLines(2)
    for (i = 0; i < count; i++) {
        if (i == headEnd && leftOut)
            put("[" leftOut " bytes are left out here]")
        if (!(i in texts))
            continue
        if (types[i] == "W")
            put("W:" shown(receivedInBoth(i)) " ")
        else if (types[i] == "")
            put("?:[removed]")
        else
            put(types[i] ":" redacted(i))
    }
}
