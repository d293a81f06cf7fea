# Embeds the icons that the symbol table names, taken from Debian's bootstrap-icons package at build time.
set(QUILMORA_ICON_FOLDER /usr/share/bootstrap-icons/svg CACHE PATH "Folder of the bootstrap-icons SVG files")
