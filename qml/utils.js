.pragma library
