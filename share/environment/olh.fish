# The viewers of on-line help for everybody who has chosen none: what is set already, even to nothing, stays.
set -q QEL_HTML_BROWSER; or set -gx QEL_HTML_BROWSER olh-browser
set -q QEL_PDF_READER; or set -gx QEL_PDF_READER olh-pdf-reader
