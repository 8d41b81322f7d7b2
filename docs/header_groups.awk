# Doxygen input filter for include/pxkcc.h: the header's own comment blocks become
# Doxygen comments, so that the HTML reference has one entry (group) a family, with the
# family's comment (members, layouts, sizes, odd-size rules, statuses) as its text and
# its declarations as members. The header itself stays as it is; every output line
# stands for the input line of the same number.
#
#   a banner             /* ------ */ /* Title */ /* ------ */   -> a group "Title"
#   its family comment   the comment right after the banner     -> the group's text
#   a comment before a declaration                               -> that declaration's
#   a comment after a member on its line                         -> that member's

function isDash(s) { return s ~ /^\/\* -+ \*\/[ \t]*$/ }
function isTitle(i) { return !isDash(L[i]) && L[i] ~ /^\/\* .*\*\/[ \t]*$/ && (i + 1) in L && isDash(L[i + 1]) }
function titleOf(s) {
    sub(/^\/\* /, "", s)
    sub(/[ \t]*\*\/[ \t]*$/, "", s)
    return s
}

{ L[NR] = $0 }

END {
    n = NR
    open = 0
    groups = 0
    last = n
    for (i = n; i >= 1; i--) if (L[i] ~ /^#ifdef __cplusplus/) { last = i; break }
    i = 1
    while (i <= n) {
        s = L[i]
        if (i == 1 && s ~ /^\/\*[ \t]*$/) { print "/** @file"; i++; continue }
        if (isDash(s) && (i + 1) in L && isTitle(i + 1)) { print ""; i++; continue }
        if (isTitle(i)) {
            groups++
            head = open ? "/** @} */ " : ""
            print head "/** @defgroup family" groups " " titleOf(s)
            open = 1
            # The dash line under the title, then any blank lines, then the family's
            # comment if one follows before the first declaration.
            j = i + 2
            while (j <= n && L[j] ~ /^[ \t]*$/) j++
            if (j <= n && L[j] ~ /^\/\*/ && !isDash(L[j]) && !isTitle(j)) {
                # Verbatim, so that its formulas and tables keep their lines.
                print " * @verbatim"
                for (k = i + 2; k < j; k++) print ""
                for (k = j; k <= n; k++) {
                    t = L[k]
                    closing = (t ~ /\*\/[ \t]*$/)
                    # Inside the verbatim block, without the comment's own decoration.
                    if (k == j) sub(/^\/\*[ ]?/, "", t)
                    else sub(/^ \*( |$)/, "", t)
                    if (closing) { sub(/\*\/[ \t]*$/, "@endverbatim @{ */", t); print t; break }
                    print t
                }
                i = k + 1
            } else {
                print " * @{ */"
                i = i + 2
            }
            continue
        }
        # The last group closes on the blank line before the header's closing lines.
        if (i == last - 1 && open && s ~ /^[ \t]*$/) { print "/** @} */"; open = 0; i++; continue }
        if (i == last && open) { print "/** @} */"; open = 0 }
        # A comment after code on its line documents that member.
        if (s ~ /[^ \t].*\/\* / && s !~ /^[ \t]*\/\*/ && s !~ /^#/) { sub(/\/\* /, "/**< ", s); print s; i++; continue }
        # A comment that starts a line documents what follows it.
        if (s ~ /^[ \t]*\/\*/ && s !~ /^[ \t]*\/\*\*/) sub(/\/\*/, "/**", s)
        print s
        i++
    }
    if (open) print "/** @} */"
}
