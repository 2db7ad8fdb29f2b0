#!/usr/bin/env tclsh
# Help from Tcl and Tk: the command olh does what the library's functions do, and its exit code is their result. The event
# loop goes on meanwhile.
#   help.tcl [TOPIC]

# Calls DONE with the result and what olh said.
proc show_help {document topic done} {
    set olh [open |[list olh show --quiet -- $document $topic 2>@1]]
    fconfigure $olh -blocking 0
    fileevent $olh readable [list hear $olh $done]
}

proc hear {olh done} {
    append ::said($olh) [read $olh]
    if {![eof $olh]} return
    fconfigure $olh -blocking 1
    set result 0
    if {[catch {close $olh} problem options]} {
        set result [lindex [dict get $options -errorcode] 2]
    }
    {*}$done $result $::said($olh)
    unset ::said($olh)
}

proc tell {result said} {
    puts [switch $result {
        0 {string cat "Help is in your browser."}
        4 {string cat "The documentation was not found. Perhaps it is not installed."}
        default {string cat "The help was not shown: $said"}
    }]
    set ::ended $result
}

show_help olh_manual [lindex $argv 0] tell
vwait ended
exit $ended
