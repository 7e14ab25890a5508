# For recipes-support/xmldom/ in a layer of yours. SRC_URI has to name the place where the archive of
# the sources lies (docs/releasing.md), and the sum of it has to be added:
#   SRC_URI[sha256sum] = "..."
#
# Tried, by scripts/test-recipes: these options and the installation, with the arguments of the class
# cmake, for 32-bit ARM with Debian's cross compiler, and the sum of the license. Not tried: BitBake
# itself, the names of the recipes that this one depends on and the layers that have them, the
# download, and the classes native and nativesdk.

SUMMARY = "XML document object model for small devices"
DESCRIPTION = "A C++ library that gives an application an XML document as a tree in memory, with \
classes in the shape of the COM-style XML DOM, and a command-line tool."
SECTION = "libs"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=f86ad632ed14e10f7c4c0f5265b66830"

DEPENDS = "expat libidn"

SRC_URI = "https://xmldom.invalid/releases/xmldom-${PV}.tar.gz"

inherit cmake

EXTRA_OECMAKE = "-DCMAKE_BUILD_TYPE=Release -DCMAKE_SKIP_INSTALL_RPATH=ON -DXMLDOM_BUILD_EXAMPLES=OFF -DXMLDOM_BUILD_TESTS=OFF"

PACKAGECONFIG ??= "tool"
PACKAGECONFIG[tool] = "-DXMLDOM_BUILD_TOOL=ON,-DXMLDOM_BUILD_TOOL=OFF,cli11"

PACKAGES =+ "${PN}-tool"
FILES:${PN}-tool = "${bindir} ${datadir}/bash-completion ${datadir}/zsh ${datadir}/fish"

BBCLASSEXTEND = "native nativesdk"
