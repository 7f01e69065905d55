# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
################################################################################
#
# zokecc
#
################################################################################

ZOKECC_VERSION = 1.0.0
ZOKECC_SITE = $(call qstrip,$(BR2_PACKAGE_ZOKECC_SOURCE))
ZOKECC_SITE_METHOD = local
ZOKECC_LICENSE = Apache-2.0
ZOKECC_LICENSE_FILES = LICENSE
ZOKECC_INSTALL_STAGING = YES

ZOKECC_CONF_OPTS = \
    -DZOKECC_TESTS=OFF \
    -DZOKECC_EXAMPLES=OFF \
    -DZOKECC_MANUAL=OFF \
    -DZOKECC_HARDENED=$(if $(BR2_PACKAGE_ZOKECC_HARDENED),ON,OFF) \
    -DZOKECC_SMALL=$(if $(BR2_PACKAGE_ZOKECC_SMALL),ON,OFF) \
    -DZOKECC_TOOLS=$(if $(BR2_PACKAGE_ZOKECC_TOOLS),ON,OFF)

$(eval $(cmake-package))
