# Makes the program of a page, which is given twice: its blocks marked "cpp top", then those marked "cpp" within main.
FNR == 1 { pass++; if (pass == 2) print "int main(int, char** arguments) {" }
/^```cpp top$/ { if (pass == 1) { on = 1; printf "#line %d \"%s\"\n", FNR + 1, FILENAME } next }
/^```cpp$/ { if (pass == 2) { on = 1; printf "#line %d \"%s\"\n", FNR + 1, FILENAME } next }
/^```/ { on = 0; next }
on { print }
END {
  print "  PoBase::setNodeWriteFormat(PoBase::WRITE_GEOMETRY);"
  print "  SoOutput out;"
  print "  if (!out.openFile(arguments[1])) return 1;"
  print "  SoWriteAction(&out).apply(root);"
  print "  out.closeFile();"
  print "  root->unref();"
  print "}"
}
