# The documentation root of the package olh-doc, found from here and searched behind all others: what users, products and
# administrators set comes first. A variable that is set to nothing stays so.
set -l root (realpath (status dirname)/../../olh/docs)
if not set -q OLH_SYSTEM_DOC_PATH
  set -gx OLH_SYSTEM_DOC_PATH $root
else if test -n "$OLH_SYSTEM_DOC_PATH"; and not contains -- $root $OLH_SYSTEM_DOC_PATH
  set -gxa OLH_SYSTEM_DOC_PATH $root
end
