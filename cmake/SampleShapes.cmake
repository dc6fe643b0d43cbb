# Writes the sample shapes as C++ to OUTPUT.
#   cmake -DFOLDER=elements -DOUTPUT=FILE.cpp -P SampleShapes.cmake
file(GLOB shapes ${FOLDER}/*.zrbf)
set(rows "")
foreach(shape ${shapes})
    get_filename_component(name ${shape} NAME_WLE)
    file(READ ${shape} bytes HEX)
    file(SIZE ${shape} size)
    string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
    string(APPEND rows "    {\"${name}\", {\"${bytes}\", ${size}}},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"editor/TunnelShapeFile.h\"

const std::vector<boreforge::SampleShape> boreforge::kSampleShapes = {
${rows}};
")
