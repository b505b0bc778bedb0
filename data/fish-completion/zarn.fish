# Completes the commands of zarn, their options, and the files that each takes.
set -l commands split join check
complete -c zarn -n "not __fish_seen_subcommand_from $commands" -f -a split -d 'Cut files into numbered parts'
complete -c zarn -n "not __fish_seen_subcommand_from $commands" -f -a join -d 'Put a set together again'
complete -c zarn -n "not __fish_seen_subcommand_from $commands" -f -a check -d 'Tell whether a set is complete and unchanged'
complete -c zarn -n "not __fish_seen_subcommand_from $commands" -l version -d 'Version'
complete -c zarn -s h -l help -d Help
complete -c zarn -n "__fish_seen_subcommand_from $commands" -s q -l quiet -d 'No progress line, no summary'
complete -c zarn -n '__fish_seen_subcommand_from split join' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder for what is made'
complete -c zarn -n '__fish_seen_subcommand_from split join' -s f -l force -d 'Replace what has the same name'
complete -c zarn -n '__fish_seen_subcommand_from split join' -l delete-parts -d 'Delete the parts after a join'
complete -c zarn -n '__fish_seen_subcommand_from split' -s s -l size -x -a '1.44M 100M 700M 1G 4G' -d 'Bytes of a part'
complete -c zarn -n '__fish_seen_subcommand_from split' -s n -l count -x -d 'Number of parts'
complete -c zarn -n '__fish_seen_subcommand_from split' -s z -l compress -d 'Cut a ZIP'
complete -c zarn -n '__fish_seen_subcommand_from split' -l ask-password -d 'Encrypt the ZIP'
complete -c zarn -n '__fish_seen_subcommand_from split' -l password-file -r -d 'Encrypt the ZIP'
complete -c zarn -n '__fish_seen_subcommand_from split' -l sfv -d 'Write checksums'
complete -c zarn -n '__fish_seen_subcommand_from split' -l delete-source -d 'Delete the file once its parts equal it'
complete -c zarn -n '__fish_seen_subcommand_from join' -l verify -d 'Hold the parts against their checksums'
