# What a maker fills in: shown in the About panel, nowhere else.
set(TAVELO_MAKER_NAME "Nguyễn Văn A")
set(TAVELO_SITE_DOMAIN "tavelo.example")
set(TAVELO_SITE_ADDRESS "https://tavelo.example")

# The name of the desktop file, by which a desktop finds the program's name and icon.
set(TAVELO_DESKTOP_FILE_NAME "tavelo")
