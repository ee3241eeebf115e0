# Completion of quillory-cli for fish.

set -l no_command 'not __fish_seen_subcommand_from find remove'
set -l in_find '__fish_seen_subcommand_from find'
set -l in_remove '__fish_seen_subcommand_from remove'

complete -c quillory-cli -f
complete -c quillory-cli -n $no_command -a find -d 'List identical files'
complete -c quillory-cli -n $no_command -a remove -d 'Show or do what a report proposes'
complete -c quillory-cli -n $no_command -l help -d 'Print help'
complete -c quillory-cli -n $no_command -l version -d 'Print the version'

complete -c quillory-cli -n $in_find -a '(__fish_complete_directories)'
complete -c quillory-cli -n $in_find -l types -x -a '(__fish_append , picture video audio document archive other)' -d 'Kinds of files to search'
complete -c quillory-cli -n $in_find -l skip -x -a '(__fish_append , system applications desktop)' -d 'Locations to leave out'
complete -c quillory-cli -n $in_find -l hidden -d 'Hidden files and folders too'
complete -c quillory-cli -n $in_find -l min-size -x -d 'Smallest file'
complete -c quillory-cli -n $in_find -l max-size -x -d 'Largest file'
complete -c quillory-cli -n $in_find -l exclude -x -d 'Leave out a name or path'
complete -c quillory-cli -n $in_find -l reference -x -a '(__fish_complete_directories)' -d 'Search too, prefer as kept files, never remove'
complete -c quillory-cli -n $in_find -l keep -x -a 'oldest newest first shortest' -d 'Which file is kept'
complete -c quillory-cli -n $in_find -l compare -x -a 'bytes sample' -d 'How files are compared'
complete -c quillory-cli -n $in_find -l format -x -a 'text json csv paths' -d 'Format of the report'
complete -c quillory-cli -n $in_find -l null -d 'NUL after each path'
complete -c quillory-cli -n $in_find -l output -r -F -d 'Write the report to a file'
complete -c quillory-cli -n $in_find -l progress -x -a 'auto always never' -d 'When to show a bar'
complete -c quillory-cli -n $in_find -l threads -x -d 'Threads to read with'
complete -c quillory-cli -n $in_find -l fail-on-duplicates -d 'Exit code 3 when there are any'
complete -c quillory-cli -n $in_find -l help -d 'Print help'

complete -c quillory-cli -n $in_remove -F
complete -c quillory-cli -n $in_remove -l apply -d 'Act instead of showing the plan'
complete -c quillory-cli -n $in_remove -l action -x -a 'trash delete hardlink reflink' -d 'What to do with a copy'
complete -c quillory-cli -n $in_remove -l journal -r -F -d 'Append each action to a file'
complete -c quillory-cli -n $in_remove -l help -d 'Print help'
