# fish completion for stackreel-cli
complete -c stackreel-cli -n __fish_use_subcommand -f
complete -c stackreel-cli -s h -l help -d 'Show the help'
complete -c stackreel-cli -n __fish_use_subcommand -l version -d 'Show the version'
complete -c stackreel-cli -n __fish_use_subcommand -a probe -d 'Show what a video is'
complete -c stackreel-cli -n __fish_use_subcommand -a export -d 'Make the vertical video of a landscape one'

complete -c stackreel-cli -n '__fish_seen_subcommand_from probe' -l json -d 'Print one JSON object'

set -l exporting '__fish_seen_subcommand_from export'
complete -c stackreel-cli -n $exporting -l aspect -x -a '9:16 4:5 1:1 Custom' -d 'Shape of the output'
complete -c stackreel-cli -n $exporting -l size -x -d 'Size of a Custom output in pixels, WxH'
complete -c stackreel-cli -n $exporting -l top -x -d 'Upper crop in fractions of the frame, X,Y,W,H'
complete -c stackreel-cli -n $exporting -l bottom -x -d 'Lower crop in fractions of the frame, X,Y,W,H'
complete -c stackreel-cli -n $exporting -l from -x -d 'Start in seconds'
complete -c stackreel-cli -n $exporting -l to -x -d 'End in seconds'
complete -c stackreel-cli -n $exporting -l recipe -r -F -d 'Take the choices from a recipe'
complete -c stackreel-cli -n $exporting -l like -r -F -d 'Take the choices from an exported video'
complete -c stackreel-cli -n $exporting -l save-recipe -r -F -d 'Write the choices to a recipe'
complete -c stackreel-cli -n $exporting -l no-audio -d 'Leave the sound out'
complete -c stackreel-cli -n $exporting -l overwrite -d 'Replace an existing destination'
complete -c stackreel-cli -n $exporting -l dry-run -d 'Only print the arguments of ffmpeg'
complete -c stackreel-cli -n $exporting -l json -d 'Print a JSON object per line'
complete -c stackreel-cli -n $exporting -l quiet -d 'Show no progress'
