# Writes the bytes of image files as constant arrays of namespace cowlimages:
#
#   cmake -DIMAGES=a.png;b.png -DOUTPUT=cowlimages.cpp -P EmbedImages.cmake
#
# The header gui/apps/cowl/cowlimages.h has the sizes; a file of another size does not compile.
set(text "#include \"gui/apps/cowl/cowlimages.h\"\n\nnamespace cowlimages {\n")
foreach(image IN LISTS IMAGES)
  get_filename_component(name ${image} NAME_WE)
  file(SIZE ${image} size)
  file(READ ${image} bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  string(APPEND text "\nconst uint8_t ${name}[${size}] = {${bytes}};\n")
endforeach()
file(WRITE ${OUTPUT} "${text}\n}  // namespace cowlimages\n")
