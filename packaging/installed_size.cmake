# Run by CPack on the packages that it has made: Installed-Size without the targets of symbolic links, which CPack counts
# as files.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(contents ${package}.contents)
  execute_process(
    COMMAND sh -euc [=[
      dpkg-deb -R "$1" "$2"
      size=$(find "$2" -path "$2/DEBIAN" -prune -o -type f -printf '%s\n' | awk '{ s += int(($1 + 1023) / 1024) } END { print s }')
      sed -i "s/^Installed-Size: .*/Installed-Size: $size/" "$2/DEBIAN/control"
      dpkg-deb --root-owner-group -b "$2" "$1"]=] sh ${package} ${contents}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${contents})
endforeach()
