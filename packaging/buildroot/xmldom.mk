################################################################################
#
# xmldom
#
################################################################################

# For package/xmldom/xmldom.mk in Buildroot. XMLDOM_SITE has to name the place where the archive of the
# sources lies (docs/releasing.md), and xmldom.hash needs its sum; or set XMLDOM_OVERRIDE_SRCDIR in
# local.mk to a folder of the sources.
#
# Tried, by scripts/test-recipes: these options and the two installations, with the arguments of
# Buildroot's cmake-package, for 32-bit ARM with Debian's cross compiler. Not tried: Buildroot itself,
# its toolchains with uClibc-ng or musl, the download, static libraries, and the package for the host.

XMLDOM_VERSION = 0.1.0
XMLDOM_SITE = https://xmldom.invalid/releases
XMLDOM_LICENSE = MIT
XMLDOM_LICENSE_FILES = LICENSE
XMLDOM_INSTALL_STAGING = YES
XMLDOM_SUPPORTS_IN_SOURCE_BUILD = NO
XMLDOM_DEPENDENCIES = expat libidn
XMLDOM_CONF_OPTS = \
	-DCMAKE_SKIP_INSTALL_RPATH=ON \
	-DXMLDOM_BUILD_EXAMPLES=OFF \
	-DXMLDOM_BUILD_TESTS=OFF

ifeq ($(BR2_PACKAGE_XMLDOM_TOOL),y)
XMLDOM_DEPENDENCIES += cli11
XMLDOM_CONF_OPTS += -DXMLDOM_BUILD_TOOL=ON
else
XMLDOM_CONF_OPTS += -DXMLDOM_BUILD_TOOL=OFF
endif

$(eval $(cmake-package))
