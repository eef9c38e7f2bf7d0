# The settings module: profile files, language files and their dialogs.
