# The viewers of on-line help for everybody who has chosen none: what is set already, even to nothing, stays.
# Without the programs nothing is set: this file outlives the package when it is removed but not purged.
if command -v olh-browser >/dev/null 2>&1 && command -v olh-pdf-reader >/dev/null 2>&1; then
  export QEL_HTML_BROWSER="${QEL_HTML_BROWSER-olh-browser}"
  export QEL_PDF_READER="${QEL_PDF_READER-olh-pdf-reader}"
fi
