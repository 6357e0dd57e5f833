# The maker fills these in. The About panel and the packages show them.
set(TAVELO_MAKER_NAME "Nguyễn Văn A")
set(TAVELO_SITE_DOMAIN "tavelo.example")
set(TAVELO_SITE_ADDRESS "https://tavelo.example")

# The desktop file's name, by which a desktop finds the program's name and icon.
set(TAVELO_DESKTOP_FILE_NAME "tavelo")

# Whom the Debian package names for questions. The site has the pictures of docs/ in the folder docs/.
set(TAVELO_MAKER_ADDRESS "tavelo@tavelo.example")

# By which macOS knows the program: its permissions are granted to this name and the maker's signature.
set(TAVELO_BUNDLE_IDENTIFIER "example.tavelo.Tavelo")
