# fish completion for ravelinth

set -l commands scan disk trash restore reveal
complete -c ravelinth -f
complete -c ravelinth -n "not __fish_seen_subcommand_from $commands" -a scan -d 'List the large files under a folder'
complete -c ravelinth -n "not __fish_seen_subcommand_from $commands" -a disk -d 'Show the boot volume\'s free space'
complete -c ravelinth -n "not __fish_seen_subcommand_from $commands" -a trash -d 'Move paths to the Trash'
complete -c ravelinth -n "not __fish_seen_subcommand_from $commands" -a restore -d 'Put items back from the Trash'
complete -c ravelinth -n "not __fish_seen_subcommand_from $commands" -a reveal -d 'Show paths in the file manager'
complete -c ravelinth -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'
complete -c ravelinth -l help -s h -d 'Print usage'

complete -c ravelinth -n "__fish_seen_subcommand_from scan" -a '(__fish_complete_directories)'
complete -c ravelinth -n "__fish_seen_subcommand_from scan" -l min-size-mb -x -d 'Size threshold in megabytes'
complete -c ravelinth -n "__fish_seen_subcommand_from scan" -l hidden -d 'Include hidden files and folders'
complete -c ravelinth -n "__fish_seen_subcommand_from scan" -l exclude -r -d 'Leave out a folder or name pattern'
complete -c ravelinth -n "__fish_seen_subcommand_from scan" -s x -l one-file-system -d 'Stay on the file system of PATH'
complete -c ravelinth -n "__fish_seen_subcommand_from scan" -l network -d 'Also enter network and FUSE file systems'
complete -c ravelinth -n "__fish_seen_subcommand_from scan disk" -l binary -d 'Show sizes in 1024-based units'
complete -c ravelinth -n "__fish_seen_subcommand_from scan disk trash restore" -l json -d 'Print JSON'
complete -c ravelinth -n "__fish_seen_subcommand_from scan" -l csv -d 'Print the files as CSV'
complete -c ravelinth -n "__fish_seen_subcommand_from restore" -l last -d 'Undo the last move to the Trash'
complete -c ravelinth -n "__fish_seen_subcommand_from scan" -l print0 -d 'Print paths separated by NUL bytes'
complete -c ravelinth -n "__fish_seen_subcommand_from trash restore reveal" -F
